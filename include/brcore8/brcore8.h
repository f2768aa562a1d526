// The whole library: every public header of every folder. The headers that stand beside this one
// join the library to others and are taken in by those who want them.
#ifndef BRCORE8_BRCORE8_H
#define BRCORE8_BRCORE8_H

#include <brcore8/containers/dlist.h>
#include <brcore8/containers/list.h>
#include <brcore8/containers/rb_tree.h>
#include <brcore8/containers/table.h>
#include <brcore8/containers/tree.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/idle.h>
#include <brcore8/core/module.h>
#include <brcore8/core/object.h>
#include <brcore8/core/throw.h>
#include <brcore8/platform/export.h>
#include <brcore8/platform/light_lock.h>
#include <brcore8/platform/resources.h>
#include <brcore8/platform/types.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/string_iterators.h>
#include <brcore8/strings/string_table.h>
#include <brcore8/strings/string_views.h>
#include <brcore8/strings/tokenizer.h>
#include <brcore8/strings/unicode.h>
#include <brcore8/text/preprocessor.h>
#include <brcore8/text/symbol_table.h>

#endif
