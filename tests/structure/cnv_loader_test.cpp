// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <memory>

#include "definition/element.h"
#include "definition/element_creator.h"
#include "script/log_rows.h"
#include "sound/playable.h"
#include "structure/scene.h"

namespace {

// Objects of a loaded file come one by one: each is initialised before it is known by name, and finds what stands
// before it.
const std::string kMore = lines("XV", "INTEGER", "VALUE=5\nONINIT=SEEK\nONCHANGED=LATE\nONDONE={LOG^ADD(\"d\");}\n") +
                          code("LATE", "LOG^ADD(\"L\");") + lines("YV", "INTEGER", "ONCHANGED=LATE\n") +
                          lines("ODD", "SCENE");

}  // namespace

TEST(CnvLoader, LoadsAndReleases) {
    const char* load = "CNVLOADER^LOAD(\"more.cnv\");";
    const struct {
        const char* what;
        std::string run;
        const char* log;
    } rows[] = {
        {"one by one, each initialised before it is known", std::string(load) + "LOG^ADD(XV);XV^SET(6);YV^SET(1);",
         "n5L"},
        {"as a group of its name",
         std::string(load) + "LOG^ADD(more.cnv^GETSIZE());more.cnv^SET(9);LOG^ADD(XV);LOG^ADD(YV);", "n3L99"},
        {"again does nothing", std::string(load) + "XV^SET(6);" + load + "LOG^ADD(XV);LOG^ADD(more.cnv^GETSIZE());",
         "n63"},
        {"a missing file", "CNVLOADER^LOAD(\"nosuch.cnv\");LOG^ADD(nosuch.cnv^GETNAME());", ""},
        {"an empty one", "CNVLOADER^LOAD(\"void.cnv\");LOG^ADD(void.cnv^GETNAME());", ""},
        {"one of unknown words is an empty group", "CNVLOADER^LOAD(\"odd.cnv\");LOG^ADD(odd.cnv^GETSIZE());", "0"},
        {"a name that an object bears", "@INT(\"more.cnv\",1);" + std::string(load) + "LOG^ADD(XV);", "XV"},
        {"released with its clones",
         std::string(load) +
             "XV^CLONE(3);S^REMOVE(\"XV_2\");CNVLOADER^RELEASE(\"more.cnv\");"
             "LOG^ADD(XV);LOG^ADD(XV_1);LOG^ADD(XV_3);LOG^ADD(YV);LOG^ADD(LATE^GETNAME());LOG^ADD(more.cnv^GETNAME());",
         "nddddXVXV_1XV_3YV"},
        {"and loaded anew", std::string(load) + "XV^SET(7);CNVLOADER^RELEASE(\"more.cnv\");" + load + "LOG^ADD(XV);",
         "nd"
         "n5"},
        {"a member that is gone", std::string(load) + "S^REMOVE(\"XV\");CNVLOADER^RELEASE(\"more.cnv\");LOG^ADD(YV);",
         "ndYV"},
        {"no such file", "CNVLOADER^RELEASE(\"nosuch.cnv\");LOG^ADD(\"on\");", "on"},
        {"what is no group", "CNVLOADER^RELEASE(\"LOG\");LOG^ADD(\"on\");", "on"},
        {"what joined its group is released, too",
         std::string(load) + "KEPT^ADDTOGROUP(\"more.cnv\");CNVLOADER^RELEASE(\"more.cnv\");"
                             "LOG^ADD(KEPT);",
         "ndKEPT"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Stage stage(lines("LOG", "STRING") + lines("KEPT", "INTEGER", "VALUE=1\n") +
                    code("SEEK", "@IF(\"XV\",_,5,{LOG^ADD(\"f\");},{LOG^ADD(\"n\");});"));
        stage.file("Dane/S/more.cnv", kMore);
        stage.file("Dane/S/odd.cnv", lines("ODD1", "NOTHING") + lines("ODD2", ""));
        stage.file("Dane/S/void.cnv", "");
        stage.run(row.run);
        EXPECT_EQ(stage.value("LOG"), row.log);
    }
}

TEST(CnvLoader, CodeThatReleasesItself) {
    Stage stage(lines("LOG", "STRING"));
    stage.file(
        "Dane/S/more.cnv",
        code("GO", "LOG^ADD(\"a\");CNVLOADER^RELEASE(\"more.cnv\");LOG^ADD(\"b\");@LOOP({LOG^ADD(_I_);},0,2,1);") +
            lines("TICKER", "TIMER", "ELAPSE=10\nONTICK={GO^RUN();LOG^ADD(\"c\");}\n"));
    stage.run("CNVLOADER^LOAD(\"more.cnv\");");
    stage.frames(4);
    EXPECT_EQ(stage.value("LOG"), "ab01c");
    stage.run("CNVLOADER^LOAD(\"more.cnv\");");
    stage.frames(1);
    EXPECT_EQ(stage.value("LOG"), "ab01cab01c");
}

TEST(CnvLoader, FilesCutOffInTheMidst) {
    const std::size_t kInline = kMore.find("{LOG") + 1;
    for (std::size_t length = 0; length <= kMore.size(); ++length) {
        Stage stage(lines("LOG", "STRING") + code("SEEK", ""));
        stage.file("Dane/S/more.cnv", std::string_view(kMore).substr(0, length));
        stage.run(
            "CNVLOADER^LOAD(\"more.cnv\");more.cnv^INC();CNVLOADER^RELEASE(\"more.cnv\");LOG^ADD(S^GETELEMENTSNO());");
        // Inline code of a handler is no member of the group, and stays.
        const std::string left = stage.value("LOG");
        ASSERT_TRUE(left.ends_with(length < kInline ? "8" : "9")) << length << ": " << left;
    }
}

TEST(ElementCreator, BuildsWhatElementsNameAndNothingElse) {
    Stage stage;
    stage.start();
    CWindow* window = CWindow::current();
    const struct {
        const char* type;
        bool object, playable;
    } rows[] = {
        {"IMAGE", true, false},  {"ANIMO", false, true},  {"SEQUENCE", false, true},
        {"image", false, false}, {"SOUND", false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        CMElement element("X");
        element.addProperty("TYPE", row.type);
        element.addProperty("FILENAME", "none.img");
        element.addProperty("VISIBLE", "FALSE");
        const std::unique_ptr<CXObject> object(CMElementCreator::createObject(window, &element));
        const std::unique_ptr<CPlayable> playable(CMElementCreator::createPlayable(window, &element));
        EXPECT_EQ(object != nullptr, row.object);
        EXPECT_EQ(playable != nullptr, row.playable);
        if (row.type == std::string_view("ANIMO")) {
            EXPECT_FALSE(playable->isVisible());
        }
    }
}
