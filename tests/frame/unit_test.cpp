// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "frame/unit.h"

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "definition/element.h"
#include "frame/extension_module.h"
#include "frame/unit_container.h"
#include "frame_stage.h"
#include "graphics/refresh_screen.h"
#include "input/control.h"
#include "input/edit_box.h"

namespace {

// Tells its life.
struct Told : CUnit6 {
    Told(CWindow* w, const char* called, std::string& to) : CUnit6(w, called), log(to) {}
    bool initialize(CUnitData* data, CMC_Scene* scene, CUnit6* previous) override {
        log += getUnitName().c_str() + std::string("+") + (data ? "d " : " ");
        return CUnit6::initialize(data, scene, previous);
    }
    bool done(CUnitData* data, CMC_Scene* scene, CUnit6* next) override {
        log += getUnitName().c_str() + std::string("- ");
        return CUnit6::done(data, scene, next);
    }
    CUnitData* getUnitData() override { return reinterpret_cast<CUnitData*>(&log); }
    std::string& log;
};

// Folders A.X, A.X/A.Y and A.X/B.Z, where X is the start; a unit for each but X's.
struct ContainerStage : FrameStage {
    ContainerStage() {
        for (const char* file : {"A.X/A.Y/f", "A.X/B.Z/f", "A.X/B.Z/A.W/f"})
            platform.write(file, "");
        window->CreateSurface();
        container = std::make_unique<CUnitContainer6>(window.get());
        window->SetUnitContainer(container.get());
        for (const char* name : {"Y", "Z", "W"})
            units.push_back(std::make_unique<Told>(window.get(), name, log));
        for (const auto& unit : units)
            container->registerUnit(unit.get());
    }

    std::vector<std::unique_ptr<Told>> units;
    std::unique_ptr<CUnitContainer6> container;
};

void* code(int value) { return reinterpret_cast<void*>(static_cast<std::intptr_t>(value)); }

}  // namespace

TEST(UnitContainer, AloneItHoldsTheDefaultUnit) {
    FrameStage stage;
    CUnitContainer6 container(stage.window.get());
    ASSERT_TRUE(container.contains("DEFAULT"));
    EXPECT_FALSE(container.contains(""));
    CUnit6* unit = container.find("default");
    EXPECT_FALSE(container.domodal());

    // A folder whose name no unit bears: the default one takes it.
    stage.platform.write("A.Hall/x", "");
    container.initialize(0, true);
    EXPECT_EQ(container.getCurrentUnit(), nullptr);
    EXPECT_EQ(unit->getUnitName(), "Default");
    container.initialize(-2, true);
    CUnitContainer6 second(stage.window.get());
    second.initialize(0, false);
    EXPECT_EQ(second.getCurrentUnit(), second.find("H"));
    EXPECT_TRUE(second.getCurrentUnit()->isActive());
}

TEST(UnitContainer, WhatEachReturnCodeDoes) {
    const struct {
        const char* what;
        int code;
        const char* path;  // codes as letters: s start, u up, a b sub-folders, x one that means nothing
        bool ends;
        const char* heard;
    } rows[] = {
        {"none", 0, "", false, ""},
        {"the end", 1, "", true, "Y- "},
        {"first sub-folder, not there", 0x100, "", false, "Y- "},
        {"what means nothing", 3, "", false, ""},
        {"a path to a sub-folder", 4, "ub", false, "Y- Z+d "},
        {"a path through it", 4, "uba", false, "Y- W+d "},
        {"passed over on the way", 4, "uxb", false, "Y- Z+d "},
        {"passed over at the end", 4, "ubx", false, "Y- "},
        {"an empty path", 4, "", false, "Y- "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        ContainerStage stage;
        stage.container->initialize(0, true);
        stage.container->initialize(0, false);
        ASSERT_EQ(stage.log, "Y+ ");
        stage.log.clear();
        CUnit6* unit = stage.container->getCurrentUnit();
        for (const char* c = row.path; *c; ++c) {
            const int entry = *c == 's' ? 8 : *c == 'u' ? 2 : *c == 'x' ? 3 : 0x100 + (*c - 'a');
            unit->getRetPath()->add(code(entry));
        }
        unit->setRetCode(row.code);
        EXPECT_EQ(stage.container->domodal(), row.ends);
        EXPECT_EQ(stage.log, row.heard);
        if (row.code == 3) {
            EXPECT_EQ(stage.container->getCurrentUnit(), unit);
        }
    }
}

TEST(Unit, OneLifeOfTheDefaultUnit) {
    FrameStage stage;
    stage.window->CreateSurface();
    CUnitContainer6 container(stage.window.get());
    stage.window->SetUnitContainer(&container);
    CUnit6* unit = container.find("Default");
    unit->setBackgroundFileName("hall.img");
    container.setCurrentUnit(unit);
    unit->exit();
    EXPECT_TRUE(container.domodal());

    unit->initialize(nullptr, nullptr, nullptr);
    EXPECT_FALSE(container.domodal()) << "a new life forgets the code";
    EXPECT_EQ(stage.window->GetRefreshScreenInterface()->getBackgroundName(), "hall.img");
    EXPECT_TRUE(unit->isActive());
    EXPECT_FALSE(unit->wasInitiallyUpdated());
    stage.window->Activate(true);
    stage.frames(1);
    EXPECT_TRUE(unit->wasInitiallyUpdated());
    unit->getRetPath()->add(code(2));
    unit->done(nullptr, nullptr, nullptr);
    EXPECT_FALSE(unit->isActive() || unit->wasInitiallyUpdated());
    EXPECT_TRUE(unit->getRetPath()->isEmpty());
    EXPECT_EQ(stage.window->GetRefreshScreenInterface()->getBackgroundName(), "");
}

TEST(Unit, DragsEndByReleaseOrByTheNextClick) {
    struct Button : CControl {
        Button(CWindow* w, std::string& to) : CControl(w), log(to) {}
        void onStartDragging(CXPoint) override { log += "start "; }
        void onDragging(CXPoint) override { log += "drag "; }
        void onEndDragging(CXPoint p) override { log += "end" + std::to_string(p.x) + "," + std::to_string(p.y); }
        std::string& log;
    };
    for (const bool endsOnClick : {false, true}) {
        SCOPED_TRACE(endsOnClick);
        FrameStage stage;
        stage.window->CreateSurface();
        CUnit6 unit(stage.window.get(), "U");
        unit.initialize(nullptr, nullptr, nullptr);
        unit.setDraggingMode(endsOnClick);
        CRefreshScreen* screen = unit.getCanvas();
        CGraphicsObject object(stage.window.get(), CXSize(10, 10), 16);
        object.SetPosition(100, 100);
        screen->put(&object, 3);
        Button button(stage.window.get(), stage.log);
        button.Enable(false);

        // The control's press starts the drag before the unit hears of that press itself.
        unit.onStartDragging(&object, {105, 105}, &button);
        EXPECT_EQ(screen->GetPriority(&object), 10000);
        stage.window->OnLButtonDown({105, 105}, 0);
        EXPECT_TRUE(unit.isDragging());
        stage.window->OnMouseMove({115, 103}, 0);
        if (endsOnClick) {
            stage.window->OnLButtonUp({115, 103}, 0);
            EXPECT_TRUE(unit.isDragging());
            stage.window->OnLButtonDown({115, 103}, 0);
        } else {
            stage.window->OnLButtonUp({115, 103}, 0);
        }
        EXPECT_FALSE(unit.isDragging());
        EXPECT_EQ(stage.log, "start drag end110,98");
        EXPECT_TRUE(button.IsEnabled());
        EXPECT_EQ(screen->GetPriority(&object), 3);
        stage.window->OnMouseMove({0, 0}, 0);
        EXPECT_EQ(object.GetPosition(), CXPoint(110, 98));
    }
}

TEST(Unit, ADraggedObjectMayDie) {
    FrameStage stage;
    stage.window->CreateSurface();
    CUnit6 unit(stage.window.get(), "U");
    auto object = std::make_unique<CGraphicsObject>(stage.window.get(), CXSize(10, 10), 16);
    unit.getCanvas()->put(object.get(), 3);
    EXPECT_TRUE(unit.onStartDragging(object.get(), {0, 0}, nullptr));
    object.reset();
    EXPECT_FALSE(unit.onDragging({5, 5}));
    EXPECT_FALSE(unit.isDragging());
    EXPECT_FALSE(unit.onEndDragging({5, 5}));
    unit.bringBackDraggingObjectPosition();
    EXPECT_FALSE(unit.onStartDragging(nullptr, {0, 0}, nullptr));
}

TEST(Unit, TabWalksRoundTheEditBoxes) {
    FrameStage stage;
    CUnit6 unit(stage.window.get(), "U");
    unit.nextEditBox();
    EXPECT_EQ(unit.getCurrentEditBoxIndex(), -1) << "there are none";
    CGraphicsObject cursor(stage.window.get());
    unit.setCursor(&cursor);
    CEditBox6* boxes[3];
    for (CEditBox6*& box : boxes)
        box = unit.addEditBox(nullptr, CXRect(0, 0, 9, 9), "");
    EXPECT_EQ(boxes[0]->getCursor(), &cursor);

    const auto press = [&](const char* keys) {
        for (; *keys; ++keys) {
            stage.platform.input.setKey(0x36, *keys == '<');
            stage.window->getKeyboardInterface()->tick();
            unit.onKeyDown(0x0F);
        }
        return unit.getCurrentEditBoxIndex();
    };
    EXPECT_EQ(press("<"), 2);
    EXPECT_EQ(press(">"), 0);
    EXPECT_EQ(press(">>"), 2);
    EXPECT_EQ(press("<"), 1);
    EXPECT_TRUE(boxes[1]->isActive());
    EXPECT_FALSE(boxes[2]->isActive());
    const std::unique_ptr<CEditBox6> removed(boxes[1]);
    unit.removeEditBox(boxes[1]);
    EXPECT_EQ(unit.getCurrentEditBoxIndex(), -1);
    unit.onKeyDown(0x1C);
    EXPECT_EQ(unit.getCurrentEditBoxIndex(), -1) << "not the tab key";
    EXPECT_EQ(press(">>>"), 0) << "two are left";
    unit.flushEditBoxes();
    EXPECT_EQ(unit.getCurrentEditBoxIndex(), -1);
}

TEST(Unit, WhatGoesOnTheScreen) {
    const struct {
        const char* toCanvas;
        const char* onTop;
        const char* priority;
        bool listed;
        bool aboveDragged;
    } rows[] = {
        {"TRUE", "FALSE", "7", true, false},
        {"TRUE", "TRUE", "7", true, true},
        {"FALSE", "TRUE", "7", false, false},
    };
    for (const auto& row : rows) {
        FrameStage stage;
        stage.window->CreateSurface();
        CUnit6 unit(stage.window.get(), "U");
        CGraphicsObject object(stage.window.get());
        CMElement element("E");
        element.addProperty("TOCANVAS", row.toCanvas);
        element.addProperty("ALWAYSONTOP", row.onTop);
        element.addProperty("PRIORITY", row.priority);
        unit.putOnCanvas(&object, &element);
        const int priority = unit.getCanvas()->GetPriority(&object);
        EXPECT_EQ(priority != -1, row.listed);
        EXPECT_EQ(priority > 10000, row.aboveDragged);
        if (row.listed && !row.aboveDragged) {
            EXPECT_EQ(priority, 7);
        }
    }
}

namespace {

// Copies a module that the build has made into the platform's folder.
std::string installModule(const FrameStage& stage, const char* built, const char* name) {
    std::ifstream stream(built, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_FALSE(content.empty()) << built;
    stage.platform.write(name, content);
    return (std::filesystem::path(stage.platform.folder()) / name).string();
}

}  // namespace

TEST(Module, AUnitModuleBringsItsUnitAndIsReleasedBeforeItGoes) {
    FrameStage stage;
    stage.window->CreateSurface();
    const std::string path = installModule(stage, TEST_MODULE, "RHall.DLL");
    installModule(stage, TEST_MODULE_WITHOUT_RELEASE, "rbad.dll");
    stage.platform.write("rtext.dll", "this is no module");
    stage.platform.write("other.dll", "its name doesn't begin with the letter");
    {
        CUnit6 unit(stage.window.get(), "Hall");
        void* handle = dlopen(path.c_str(), RTLD_NOW);
        ASSERT_NE(handle, nullptr) << dlerror();
        auto** given = static_cast<CUnit6**>(dlsym(handle, "theUnit"));
        auto* calls = static_cast<char*>(dlsym(handle, "theCalls"));
        ASSERT_TRUE(given && calls);
        *given = &unit;
        {
            const CUnitContainer6 container(stage.window.get());
            EXPECT_STREQ(calls, "create unit ");
            EXPECT_EQ(container.find("HALL"), &unit);
        }
        EXPECT_STREQ(calls, "create unit release ");
        dlclose(handle);
    }
    std::string said;
    for (const std::string& line : stage.platform.shell.debugLines())
        said += line + "\n";
    EXPECT_NE(said.find("Error while loading dll: rbad.dll"), std::string::npos) << said;
    EXPECT_NE(said.find("Error while loading dll: rtext.dll"), std::string::npos) << said;
    EXPECT_EQ(said.find("other.dll"), std::string::npos) << said;
}

TEST(Module, AnExtensionsNameMayLackItsEnding) {
    FrameStage stage;
    installModule(stage, TEST_EXTENSION, "Things.dll");
    const struct {
        const char* name;
        bool loaded;
    } rows[] = {
        {"things", true},
        {"THINGS.DLL", true},
        {"things.", false},
        {"nothing", false},
    };
    for (const auto& row : rows) {
        const CMC_DLLExModuleInterface module(row.name, nullptr);
        EXPECT_EQ(module.getInterface() != nullptr, row.loaded) << row.name;
    }
}
