#include "core/class_table.h"

#include <brcore8/core/object.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <memory>
#include <string>

namespace {

bool IsTestClass(const SClassInfo& info) {
    return std::strncmp(info.className, "STest", 5) == 0;
}

const char* NameOrNull(const SClassInfo* info) {
    return info != nullptr ? info->className : nullptr;
}

TEST(ClassTable, EveryRowIsRegisteredAsItSays) {
    for (const ClassRow& row : kLibraryClasses) {
        SCOPED_TRACE(row.name);
        SClassInfo* info = g_pClassInfo;
        while (info != nullptr && std::strcmp(info->className, row.name) != 0)
            info = info->next;
        ASSERT_NE(info, nullptr);
        EXPECT_STREQ(NameOrNull(info->base), row.base);
        EXPECT_EQ(info->schema, row.schema);
        EXPECT_GE(info->objectSize, sizeof(SObject));
        const std::unique_ptr<SObject> object(info->CreateObject());
        EXPECT_EQ(object != nullptr, row.creatable);
        if (object != nullptr) {
            EXPECT_EQ(object->GetClassInfo(), info);
        }
    }
}

TEST(ClassTable, EveryRegisteredClassHasItsRow) {
    std::map<std::string, int> counts;
    for (const ClassRow& row : kLibraryClasses)
        ++counts[row.name];
    for (const SClassInfo* info = g_pClassInfo; info != nullptr; info = info->next) {
        if (!IsTestClass(*info)) --counts[info->className];
    }
    for (const auto& [name, difference] : counts)
        EXPECT_EQ(difference, 0) << name;
}

}  // namespace
