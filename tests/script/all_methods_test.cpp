// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "script/code_line.h"
#include "script/lifetime.h"
#include "script/method_table.h"
#include "support/stage.h"

namespace {

struct Type {
    int number;
    std::string_view keyword;
    std::string_view name;
};

// Whatever a definition can make, and what stands in every application by itself. A type that is built one day is
// called here from that day on.
constexpr Type kTypes[] = {
#define SCRIPT_TYPE(number, text, keyword, pass, class, runner) {number, keyword, "X"},
#define LATER_TYPE(number, text, keyword, pass)
#include "script/script_types.def"
#undef SCRIPT_TYPE
#undef LATER_TYPE
    {102, "", "RANDOM"}, {1000, "", "APP"}, {1001, "", "EP"}, {1002, "", "S"}, {11000, "", "SYSTEM"},
};

using Value = std::shared_ptr<CMC_Variable>;
using Values = std::vector<Value>;  // a null pointer is a parameter that is no object at all

Values many(const Value& value) { return Values(12, value); }
template <class T, class From>
Value one(From from) {
    return std::make_shared<T>(from);
}

std::vector<Values> parameterLists() {
    constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
    std::vector<Values> lists = {{}, many(nullptr), many(one<CMC_Bool>(true))};
    for (const int number : {0, 1, -1, 1000, kMost, kLeast})
        lists.push_back(many(one<CMC_Integer>(number)));
    for (const double number : {-0.5, 1e308, std::numeric_limits<double>::quiet_NaN()})
        lists.push_back(many(one<CMC_Double>(number)));
    for (const char* text : {"", "X", "S", "BLOCK", "PICTURE", "LIST", "none", "..\\..", "{N^INC();}"})
        lists.push_back(many(one<CMC_String>(CXString(text))));
    // A name in front, as many methods want it, then numbers or texts.
    for (const char* text : {"X", "PICTURE", "LIST", "BLOCK", "none"}) {
        for (const int number : {3, -2}) {
            lists.push_back(many(one<CMC_Integer>(number)));
            lists.back().front() = one<CMC_String>(CXString(text));
        }
        lists.push_back(many(one<CMC_String>(CXString("ONCHANGED"))));
        lists.back().front() = one<CMC_String>(CXString(text));
    }
    return lists;
}

std::unique_ptr<Stage> stageWith(const Type& type) {
    std::string scene = lines("N", "INTEGER") + code("BLOCK", "N^INC();") + lines("LIST", "ARRAY") +
                        lines("PICTURE", "IMAGE", "TOCANVAS=TRUE\nVISIBLE=TRUE");
    if (type.name == "X") scene += lines("X", std::string(type.keyword));
    return std::make_unique<Stage>(scene);
}

// With nothing, too much and the wrong things, on objects whose definitions say nothing either.
TEST(AllMethods, TakeWhateverScriptsPassThem) {
    const std::vector<Values> all = parameterLists();
    int calls = 0;
    for (const Type& type : kTypes) {
        if (type.name == "X" && type.keyword.empty()) continue;
        SCOPED_TRACE(std::string(type.name == "X" ? type.keyword : type.name));
        for (const Values& values : all) {
            std::unique_ptr<Stage> stage = stageWith(type);
            CMC_Object* object = stage->object(std::string(type.name));
            ASSERT_NE(object, nullptr);
            CMC_Runner* runner = runnerOf(object);
            ASSERT_NE(runner, nullptr);
            std::vector<int> ids;
            for (const MethodRow* row : runner->rows())
                if (row) ids.push_back(row->id);
            for (const int id : ids) {
                // An earlier call may have taken the object away, or the whole scene.
                object = stage->object(std::string(type.name));
                if (object == nullptr || object->isRetired() || stage->object("N") == nullptr) {
                    stage.reset();
                    stage = stageWith(type);
                    object = stage->object(std::string(type.name));
                }
                CXVector params;
                for (const Value& value : values)
                    params.add(value.get());
                {
                    const ScriptBudget budget(2000);
                    const ScriptScope scope;
                    CMC_Object::release(runnerOf(object)->run(id, object, stage->current(), &params));
                }
                stage->frames();
                ++calls;
            }
            if (stage->object("N") == nullptr) continue;
            stage->run("N^SET(41);N^INC();");
            EXPECT_EQ(stage->value("N"), "42");
        }
    }
    EXPECT_GT(calls, 10000);
}

}  // namespace
