// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The running effects.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "animation/animated_filter.h"
#include "animation/animo.h"
#include "frame/window.h"
#include "script/path.h"
#include "script/variable.h"
#include "script/vector.h"
#include "structure/scene.h"

namespace {

// Properties whose keys stand in a table of their class.
template <class T>
class KeyedProperties : public CFilterProperties {
public:
    using CFilterProperties::CFilterProperties;
    void setProperty(const CXString& key, const CXString& value) override {
        setByKey<T>(static_cast<T&>(*this), T::kKeys, key, value);
    }
};

// An effect with properties P, and of each object a state S.
template <class P, class S>
class Effect : public CAnimatedFilter {
public:
    Effect(CWindow* window, std::unique_ptr<P> properties)
        : CAnimatedFilter(window, std::move(properties)), chosen_(static_cast<P&>(getProperties())) {}

    std::unique_ptr<CFilterEntry> createEntry(CGraphicsObject* object, CMC_Object* scriptObject) override {
        auto entry = CAnimatedFilter::createEntry(object, scriptObject);
        entry->state = std::make_unique<S>();
        return entry;
    }

protected:
    static S& stateOf(CFilterEntry& entry) { return static_cast<S&>(*entry.state); }
    const P& chosen() const { return chosen_; }

private:
    P& chosen_;
};

struct FadeProperties : KeyedProperties<FadeProperties> {
    FadeProperties(int classId, double from, double to) : KeyedProperties(classId), start(from), end(to) {}
    double speed = 0.1;
    double start;
    double end;
    static constexpr FilterKey<FadeProperties> kKeys[] = {
        {"SPEED", &FadeProperties::speed},
        {"START", &FadeProperties::start},
        {"END",   &FadeProperties::end  }
    };
};

struct FadeState : AnimatedState {
    double current = 0;
    bool rising = false;
};

class Fade : public Effect<FadeProperties, FadeState> {
public:
    enum Way { kIn, kOut, kInOut };
    Fade(CWindow* window, Way way, std::unique_ptr<FadeProperties> properties)
        : Effect(window, std::move(properties)), way_(way) {}

protected:
    void activate(CFilterEntry& entry) override {
        stateOf(entry).current = chosen().start;
        entry.getObject()->SetOpacity(truncated(chosen().start));
    }

    bool step(CFilterEntry& entry) override {
        FadeState& state = stateOf(entry);
        const bool up = way_ == kIn || (way_ == kInOut && state.rising);
        const int old = truncated(state.current);
        double next = up ? state.current + chosen().speed : state.current - chosen().speed;
        const double goal = way_ == kInOut && !up ? chosen().start : chosen().end;
        const bool arrived = up ? !(next < goal) : !(next > goal);  // what is no number has arrived
        if (arrived) {
            next = goal;
            state.rising = !up;
        }
        state.current = next;
        if (old != next) {
            entry.getObject()->SetOpacity(truncated(next));
            entry.getObject()->Invalidate();
        }
        return arrived && way_ != kInOut;
    }

private:
    Way way_;
};

struct WalkProperties : KeyedProperties<WalkProperties> {
    using KeyedProperties::KeyedProperties;
    int speed = 1;
    CXString pathDef;
    bool looped = false;
    static constexpr FilterKey<WalkProperties> kKeys[] = {
        {"SPEED",   &WalkProperties::speed  },
        {"PATHDEF", &WalkProperties::pathDef},
        {"LOOPED",  &WalkProperties::looped }
    };
};

struct WalkState : AnimatedState {
    CXPoint origin;
    double offsetX = 0;
    double offsetY = 0;
    int segment = 0;
};

CXPoint truncatedPoint(double x, double y) { return {truncated(x), truncated(y)}; }

// Whether `a` is as far from 0 as `b`.
bool reaches(int a, int b) { return std::abs(static_cast<std::int64_t>(a)) >= std::abs(static_cast<std::int64_t>(b)); }

class Walk : public Effect<WalkProperties, WalkState> {
public:
    Walk(int classId, CWindow* window, CMC_Scene* scene)
        : Effect(window, std::make_unique<WalkProperties>(classId)), scene_(scene) {}

protected:
    // A walk that was stopped goes on with the whole of the segment it was in, from where the object stands.
    void activate(CFilterEntry& entry) override { beginSegment(entry, stateOf(entry).segment); }

    bool step(CFilterEntry& entry) override {
        WalkState& state = stateOf(entry);
        // At a speed of 0 it stands still, as it does without a path.
        const auto speed = static_cast<std::uint64_t>(std::abs(static_cast<std::int64_t>(chosen().speed)));
        if (speed == 0 || state.counter % speed != 0) return false;
        CMC_Object* found = scene_ ? scene_->lookUp(chosen().pathDef.view()) : nullptr;
        if (!found || found->getType() != CMC_Path::kType) return false;
        const auto& path = static_cast<const CMC_Path&>(*found);
        CMC_Object* node = path.getNode(state.segment);
        // A segment without length, and a node that is no vector, are over at once: nothing divides by 0.
        if (node && node->getType() == CMC_Vector::kType) {
            const auto& vector = static_cast<const CMC_Vector&>(*node);
            const double length = vector.length();
            if (length > 0 && !walk(entry, vector, length / path.getDensity())) return false;
            if (!entry.getObject()) return false;
        }
        const bool isLast = state.segment >= path.getSize() - 1;
        beginSegment(entry, isLast ? 0 : state.segment + 1);
        return isLast && !chosen().looped;
    }

private:
    void beginSegment(CFilterEntry& entry, int segment) {
        WalkState& state = stateOf(entry);
        state.origin = entry.getObject()->getPosition();
        state.offsetX = state.offsetY = 0;
        state.segment = segment;
    }

    // True when the segment is finished.
    bool walk(CFilterEntry& entry, const CMC_Vector& vector, double steps) {
        WalkState& state = stateOf(entry);
        const CXPoint goal = truncatedPoint(vector.at(0), vector.at(1));
        state.offsetX += vector.at(0) / steps;
        state.offsetY += vector.at(1) / steps;
        const CXPoint offset = truncatedPoint(state.offsetX, state.offsetY);
        CGraphicsObject* object = entry.getObject();
        if (object->getPosition() - state.origin == offset) return false;
        object->Invalidate();
        object->setPosition(state.origin + offset);
        // A handler of a collision may have taken it away.
        if (entry.getObject()) object->Invalidate();
        return reaches(offset.x, goal.x) && reaches(offset.y, goal.y);
    }

    CMC_Scene* scene_;
};

struct WaterProperties : KeyedProperties<WaterProperties> {
    using KeyedProperties::KeyedProperties;
    double factor = 1.1;
    static constexpr FilterKey<WaterProperties> kKeys[] = {
        {"FACTOR", &WaterProperties::factor}
    };
};

struct WaterState : AnimatedState {
    // A picture as it was before the ripple, and the plane that the ripple left in it. One that has another plane by
    // now has got a new picture.
    struct Source {
        Plane original;
        Plane left;
        CXSize size;
    };
    std::vector<Source> sources;  // for each frame of an animation, else one

    // Sine and cosine of the distance from the centre, for one quarter of the picture: the others mirror it.
    CXSize quarter;
    std::vector<float> sines, cosines;

    void buildTables(int width, int height);
};

// The centre lies at half the size, rounded down, so no pixel is farther from it than that.
void WaterState::buildTables(int width, int height) {
    const CXSize needed(width / 2 + 1, height / 2 + 1);
    if (needed == quarter) return;
    quarter = needed;
    const std::size_t count = static_cast<std::size_t>(needed.width) * static_cast<std::size_t>(needed.height);
    sines.resize(count);
    cosines.resize(count);
    std::size_t i = 0;
    for (int dy = 0; dy < needed.height; ++dy) {
        for (int dx = 0; dx < needed.width; ++dx, ++i) {
            const double distance = std::sqrt(static_cast<double>(dx) * dx + static_cast<double>(dy) * dy);
            sines[i] = static_cast<float>(std::sin(distance));
            cosines[i] = static_cast<float>(std::cos(distance));
        }
    }
}

class Water : public Effect<WaterProperties, WaterState> {
public:
    static constexpr int kPeriod = 51;  // rounds until the ripple begins again

    Water(int classId, CWindow* window) : Effect(window, std::make_unique<WaterProperties>(classId)) {
        for (int i = 0; i < kPeriod; ++i) {
            const auto at = static_cast<std::size_t>(i);
            sines_[at] = std::sin(static_cast<float>(i));
            cosines_[at] = std::cos(static_cast<float>(i));
        }
    }

    std::unique_ptr<CFilterEntry> createEntry(CGraphicsObject* object, CMC_Object* scriptObject) override {
        auto entry = Effect::createEntry(object, scriptObject);
        if (CGraphicsObject* picture = writable(*entry)) sourceOf(*entry, *picture);
        return entry;
    }

protected:
    void activate(CFilterEntry&) override {}

    bool step(CFilterEntry& entry) override {
        CGraphicsObject* picture = writable(entry);
        if (!picture) return false;
        WaterState::Source& source = sourceOf(entry, *picture);
        // Into a plane of its own: clones may show the one that is there.
        Plane rippled = picture->getData().copy();
        ripple(stateOf(entry), source, picture->getAlpha(), rippled);
        source.left = rippled;
        picture->setPlanes(picture->Size(), picture->getBpp(), std::move(rippled), picture->getAlpha());
        entry.getObject()->Invalidate();
        return false;
    }

private:
    // Larger pictures aren't rippled: the tables would take more than the picture.
    static constexpr std::int64_t kMostPixels = 1 << 24;

    // The picture that the object shows; null when it has none to be rippled.
    CGraphicsObject* writable(CFilterEntry& entry) const {
        CGraphicsObject* picture = entry.getObject();
        if (CAnimo* animation = entry.getAnimation()) {
            animation->ownFrames();
            picture = animation->GetFrame(-1);
        }
        if (!picture || !window_ || !prepareForFilter(*picture, window_->GetBpp())) return nullptr;
        const CXSize size = picture->Size();
        return static_cast<std::int64_t>(size.width) * size.height <= kMostPixels ? picture : nullptr;
    }

    static WaterState::Source& sourceOf(CFilterEntry& entry, const CGraphicsObject& picture) {
        WaterState& state = stateOf(entry);
        const CAnimo* animation = entry.getAnimation();
        const auto frame = static_cast<std::size_t>(animation ? std::max(animation->Current(), 0) : 0);
        if (frame >= state.sources.size()) state.sources.resize(frame + 1);
        WaterState::Source& source = state.sources[frame];
        if (!(source.left == picture.getData()) || source.size != picture.Size())
            source = {picture.getData().copy(), picture.getData(), picture.Size()};
        state.buildTables(source.size.width, source.size.height);
        return source;
    }

    void ripple(const WaterState& state, const WaterState::Source& source, const Plane& alpha, Plane& target) const {
        const auto phase = static_cast<std::size_t>(state.counter % kPeriod);
        const double sine = sines_[phase], cosine = cosines_[phase];
        // Beyond any picture's length a factor makes no difference; what is no number moves nothing.
        constexpr double kLargest = 1 << 28;
        const double factor = std::isnan(chosen().factor) ? 0 : std::clamp(chosen().factor, -kLargest, kLargest);
        const int width = source.size.width, height = source.size.height;
        const auto columns = static_cast<std::size_t>(state.quarter.width);
        const std::span<const std::uint16_t> from = source.original.pixels();
        const std::span<const std::uint8_t> mask = alpha.bytes();
        const std::span<std::uint16_t> to = target.pixels();
        std::vector<int> shifts(columns);
        for (int y = 0; y < height; ++y) {
            const std::size_t quarterRow = static_cast<std::size_t>(std::abs(height / 2 - y)) * columns;
            const float* sines = state.sines.data() + quarterRow;
            const float* cosines = state.cosines.data() + quarterRow;
            for (std::size_t i = 0; i < columns; ++i)
                shifts[i] = static_cast<int>((sine * cosines[i] + cosine * sines[i]) * factor);
            const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            for (int x = 0; x < width; ++x) {
                const std::size_t at = row + static_cast<std::size_t>(x);
                if (!mask.empty() && mask[at] == 0) continue;
                const int shift = shifts[static_cast<std::size_t>(std::abs(width / 2 - x))];
                const int sourceX = std::clamp(x + shift, 0, width - 1);
                const int sourceY = std::clamp(y + shift, 0, height - 1);
                to[at] = from[static_cast<std::size_t>(sourceY) * static_cast<std::size_t>(width) +
                              static_cast<std::size_t>(sourceX)];
            }
        }
    }

    std::array<float, kPeriod> sines_{}, cosines_{};
};

using Made = std::unique_ptr<CAnimatedFilter>;

template <Fade::Way way>
Made makeFade(int classId, CWindow* window, CMC_Scene*) {
    const double from = way == Fade::kOut ? 255 : 0;
    return std::make_unique<Fade>(window, way, std::make_unique<FadeProperties>(classId, from, 255 - from));
}

Made makeWalk(int classId, CWindow* window, CMC_Scene* scene) { return std::make_unique<Walk>(classId, window, scene); }
Made makeWater(int classId, CWindow* window, CMC_Scene*) { return std::make_unique<Water>(classId, window); }

struct ActionRow {
    std::string_view action;
    int classId;
    Made (*make)(int classId, CWindow*, CMC_Scene*);
};

constexpr ActionRow kActions[] = {
    {"FADEIN",    1, makeFade<Fade::kIn>   },
    {"FADEOUT",   2, makeFade<Fade::kOut>  },
    {"FADEINOUT", 1, makeFade<Fade::kInOut>},
    {"PATH",      4, makeWalk              },
    {"WATER",     5, makeWater             },
};

}  // namespace

std::unique_ptr<CAnimatedFilter> makeAnimatedFilter(const CXString& action, CWindow* window, CMC_Scene* scene) {
    const auto* row = std::ranges::find(kActions, action.view(), &ActionRow::action);
    return row == std::end(kActions) ? nullptr : row->make(row->classId, window, scene);
}
