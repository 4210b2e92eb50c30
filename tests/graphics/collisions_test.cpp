// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "graphics/collision_inspector.h"
#include "graphics/graphics_object.h"
#include "support/stage.h"

namespace {

// Objects of 10 by 10 named by letters, and what their observer hears: "+ab" a met b, "-ab" a left b.
class Yard : public CCollisionObserver {
public:
    Yard() {
        stage.start();
        inspector = CWindow::current()->getCollisionInspectorInterface();
        inspector->addNotifier(this);
    }
    ~Yard() override {
        for (const auto& object : objects)
            inspector->removeMonitoredObject(object.get());
        inspector->removeNotifier(this);
    }

    // `solid`: columns from the left whose alpha isn't 0; negative: no alpha plane.
    CGraphicsObject* add(int x, int y, bool useAlpha, int solid = -1) {
        auto object = std::make_unique<CGraphicsObject>(CWindow::current(), CXSize(10, 10), 16);
        if (solid >= 0) {
            Plane alpha(100);
            for (std::size_t i = 0; i < 100; ++i)
                alpha.bytes()[i] = static_cast<int>(i % 10) < solid ? 1 : 0;
            object->setPlanes({10, 10}, 16, object->getData(), alpha);
        }
        object->SetPosition(x, y);
        object->setMonitorCollisions(true);
        inspector->addMonitoredObject(object.get(), useAlpha);
        objects.push_back(std::move(object));
        return objects.back().get();
    }

    std::string take() { return std::exchange(heard, ""); }

    void onCollision(CGraphicsObject* moved, CGraphicsObject* met) override {
        heard += std::string("+") + name(moved) + name(met);
        if (then) std::exchange(then, nullptr)();
    }
    void onCollisionFinished(CGraphicsObject* moved, CGraphicsObject* met) override {
        heard += std::string("-") + name(moved) + name(met);
        if (then) std::exchange(then, nullptr)();
    }

    Stage stage;
    CCollisionInspector* inspector;
    std::vector<std::unique_ptr<CGraphicsObject>> objects;
    std::string heard;
    std::function<void()> then;  // run by the next collision

private:
    char name(const CGraphicsObject* object) const {
        for (std::size_t i = 0; i < objects.size(); ++i) {
            if (objects[i].get() == object) return static_cast<char>('a' + i);
        }
        return '?';
    }
};

}  // namespace

TEST(Collisions, BeginAndEndWithTheBoxes) {
    Yard yard;
    CGraphicsObject* a = yard.add(0, 0, false);
    CGraphicsObject* b = yard.add(100, 0, false);
    a->SetPosition(90, 0);
    EXPECT_EQ(yard.take(), "") << "boxes that touch don't overlap";
    a->Move(1, 0);
    a->Move(1, 0);
    EXPECT_EQ(yard.take(), "+ab") << "told once";
    a->SetPosition(0, 0);
    a->Move(0, 1);
    EXPECT_EQ(yard.take(), "-ab");

    a->SetPosition(95, 0);
    b->SetPosition(300, 0);
    EXPECT_EQ(yard.take(), "+ab") << "the mark stands in the entry of b, which isn't looked at when b moves";
    a->Move(1, 0);
    EXPECT_EQ(yard.take(), "-ab");
    yard.inspector->removeMonitoredObject(b);
    b->SetPosition(95, 0);
    a->SetPosition(96, 0);
    EXPECT_EQ(yard.take(), "") << "one that isn't listed is met by nobody";
}

TEST(Collisions, ByAlphaNeedTwoSolidPixelsAndEndTheCall) {
    Yard yard;
    CGraphicsObject* a = yard.add(0, 0, false, 4);
    yard.add(100, 0, true, 4);
    yard.add(100, 0, false);
    a->SetPosition(95, 0);
    EXPECT_EQ(yard.take(), "+ac") << "a's solid part ends at 99, where b begins at 100";
    a->SetPosition(0, 0);
    EXPECT_EQ(yard.take(), "-ac");
    a->SetPosition(97, 0);
    EXPECT_EQ(yard.take(), "+ab") << "c stands behind the first hit by alpha";
    a->Move(9, 0);
    EXPECT_EQ(yard.take(), "+ac") << "a running collision stays while the boxes overlap";
    a->SetPosition(200, 0);
    EXPECT_EQ(yard.take(), "-ab-ac");
}

TEST(Collisions, SurviveWhatTheirHandlersDo) {
    Yard yard;
    CGraphicsObject* a = yard.add(0, 0, false);
    yard.add(100, 0, false);
    yard.add(100, 0, false);
    yard.then = [&] { yard.inspector->removeMonitoredObject(a); };
    a->SetPosition(95, 0);
    EXPECT_EQ(yard.take(), "+ab") << "the moved one was taken out";

    yard.inspector->addMonitoredObject(a, false);
    yard.then = [&] { a->SetPosition(0, 0); };
    a->SetPosition(95, 1);
    EXPECT_EQ(yard.take(), "+ac-ab-ac") << "b's collision was running; the handler of c's moves away from both";

    yard.then = [&] {
        yard.inspector->removeMonitoredObject(yard.objects[1].get());
        yard.objects[1].reset();
    };
    a->SetPosition(95, 0);
    EXPECT_EQ(yard.take(), "+ab+ac") << "the one that was met is gone";
}
