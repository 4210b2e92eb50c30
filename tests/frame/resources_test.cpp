// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "frame/application.h"
#include "frame/resources_manager.h"
#include "frame/unit.h"
#include "frame_stage.h"
#include "graphics/refresh_screen.h"
#include "sound/playable.h"

namespace {

// A picture that plays, as animations do.
struct Picture : CGraphicsObject, CPlayable {
    Picture(CWindow* window, const char* file, std::string& to)
        : CGraphicsObject(window, CXSize(4, 4), 16), CPlayable(window), log(to) {
        setFilename(file);
    }
    ~Picture() override { log += "~ "; }
    using CPlayable::play;
    void play() override {}
    void stop(bool) override {}
    void pause() override {}
    void resume() override {}
    void seek(int) override {}
    void hide() override { log += "hide" + std::to_string(GetCanvas() != nullptr) + " "; }
    std::string& log;
};

}  // namespace

TEST(ResourcesManager, CountsAndTheEndOfAnObject) {
    FrameStage stage;
    stage.window->CreateSurface();
    CResourcesManager manager(stage.window.get());
    auto* picture = new Picture(stage.window.get(), "Dane\\a.ann", stage.log);
    manager.add(picture);
    CRefreshScreen* screen = stage.window->GetRefreshScreenInterface();
    screen->put(picture, 1);
    EXPECT_EQ(manager.get("b.ann"), nullptr);
    EXPECT_EQ(manager.get("DANE\\A.ANN"), picture);
    manager.remove(picture);
    EXPECT_EQ(stage.log, "");
    manager.remove(picture);
    EXPECT_EQ(stage.log, "hide1 ~ ");
    EXPECT_EQ(screen->GetPriority(picture), -1);
    EXPECT_EQ(manager.get("Dane\\a.ann"), nullptr);
    manager.remove(picture);  // one that isn't there changes nothing
}

TEST(ResourcesManager, TheFirstOfTwoAndAPlaceInTheList) {
    FrameStage stage;
    CResourcesManager manager(stage.window.get());
    auto* first = new Picture(stage.window.get(), "a", stage.log);
    auto* second = new Picture(stage.window.get(), "A", stage.log);
    auto* third = new Picture(stage.window.get(), "a", stage.log);
    manager.add(first);
    manager.insertAt(second, 0);
    manager.insertAt(third, 99);
    EXPECT_EQ(manager.get("a"), second);
    manager.remove(second);
    manager.remove(second);
    EXPECT_EQ(manager.get("a"), first);
}

TEST(ResourcesManager, ChildrenAreAskedAndFlushed) {
    FrameStage stage;
    CResourcesManager general(stage.window.get()), child(stage.window.get());
    general.add(&child);
    auto* mine = new Picture(stage.window.get(), "mine", stage.log);
    auto* shared = new Picture(stage.window.get(), "shared", stage.log);
    child.add(mine);
    general.add(shared);
    EXPECT_EQ(general.get("MINE"), mine);
    EXPECT_EQ(child.get("shared"), nullptr) << "a child doesn't look upwards";
    child.remove(shared);
    EXPECT_EQ(stage.log, "") << "it isn't the child's";
    general.flush();
    EXPECT_EQ(stage.log, "~ ~ ") << "whatever their counts";
    EXPECT_EQ(child.get("mine"), nullptr);
    child.add(new Picture(stage.window.get(), "late", stage.log));
    EXPECT_EQ(general.get("late"), nullptr) << "flushed children are forgotten";
}
