// The whole library: every public header of every folder. The headers that stand beside this one
// join the library to others and are taken in by those who want them.
#ifndef BRCORE8_BRCORE8_H
#define BRCORE8_BRCORE8_H

#include <brcore8/containers/dlist.h>
#include <brcore8/containers/list.h>
#include <brcore8/containers/rb_tree.h>
#include <brcore8/containers/table.h>
#include <brcore8/containers/tree.h>
#include <brcore8/core/cast.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/idle.h>
#include <brcore8/core/module.h>
#include <brcore8/core/object.h>
#include <brcore8/core/pool_resource.h>
#include <brcore8/core/throw.h>
#include <brcore8/core/version.h>
#include <brcore8/graphics/gdi_object.h>
#include <brcore8/platform/console.h>
#include <brcore8/platform/export.h>
#include <brcore8/platform/light_lock.h>
#include <brcore8/platform/resources.h>
#include <brcore8/platform/threads.h>
#include <brcore8/platform/types.h>
#include <brcore8/settings/registry.h>
#include <brcore8/settings/status.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/file.h>
#include <brcore8/streams/global.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/input_stream.h>
#include <brcore8/streams/output_file.h>
#include <brcore8/streams/output_filters.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/streams/output_on_change.h>
#include <brcore8/streams/output_stream.h>
#include <brcore8/streams/progress.h>
#include <brcore8/streams/std_streams.h>
#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/string_iterators.h>
#include <brcore8/strings/string_table.h>
#include <brcore8/strings/string_views.h>
#include <brcore8/strings/tokenizer.h>
#include <brcore8/strings/unicode.h>
#include <brcore8/text/preprocessor.h>
#include <brcore8/text/rtf_document.h>
#include <brcore8/text/rtf_tables.h>
#include <brcore8/text/symbol_table.h>

#endif
