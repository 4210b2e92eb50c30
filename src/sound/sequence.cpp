// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "sound/sequence.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "animation/animation_manager.h"
#include "animation/animo.h"
#include "foundation/random.h"
#include "frame/window.h"
#include "script/lifetime.h"
#include "sound/animo_event.h"
#include "sound/speaking_animation.h"

namespace {

constexpr int kPlaying = 1, kPaused = 2;  // bits of the status
constexpr int kTellStarted = 1, kTellFinished = 3;
constexpr int kSeekFirst = -1, kSeekLast = -2, kSeekBack = -3, kSeekOn = -4;

// 1 to 9, A to Z, a to z are 0 to 60. ORDER: digits
int valueOfDigit(char digit) {
    const int byte = static_cast<unsigned char>(digit);
    if (byte <= '9') return byte - 0x31;
    return byte <= 'Z' ? byte - 0x38 : byte - 0x3E;
}

CSequencedPlayable* asSequence(CPlayable* playable) {
    const bool isSequence = playable && playable->getType() == CSequencedPlayable::kType;
    return isSequence ? static_cast<CSequencedPlayable*>(playable) : nullptr;
}

CAnimo* animationOf(CPlayable* playable) {
    if (playable->getType() == CAnimoEventPlayable::kType)
        return static_cast<CAnimoEventPlayable*>(playable)->getAnimation();
    if (playable->getType() == CSpeakingAnimation::kType)
        return static_cast<CSpeakingAnimation*>(playable)->getAnimation();
    return dynamic_cast<CAnimo*>(playable);
}

}  // namespace

CSequencedPlayable::CSequencedPlayable(CWindow* window) : SequenceElement(window) {
    type_ = kType;
    if (window) window->getAnimationManagerInterface()->add(this, nullptr);
}

CSequencedPlayable::~CSequencedPlayable() {
    CSequencedPlayable::leave();
    if (playableWindow_) playableWindow_->getAnimationManagerInterface()->remove(this);
}

void CSequencedPlayable::leave() {
    for (const auto& link : children_) {
        CPlayable* child = link.get();
        if (!child) continue;
        child->removeNotifier(this);
        child->dropParent(this);
    }
    children_.clear();
    index_ = -1;
    status_ = 0;
    ++turn_;
}

void CSequencedPlayable::addChild(CPlayable* child) {
    children_.emplace_back(child);
    child->setParent(this);
}

// The place of such a child stays, for digits count places.
void CSequencedPlayable::breakCircles() {
    struct Visit {
        CSequencedPlayable* sequence;
        std::size_t next;
    };
    std::vector<Visit> path = {
        {this, 0}
    };
    std::unordered_set<const CPlayable*> seen = {this}, onPath = {this};
    while (!path.empty()) {
        CSequencedPlayable* sequence = path.back().sequence;
        if (path.back().next == sequence->children_.size()) {
            onPath.erase(sequence);
            path.pop_back();
            continue;
        }
        PlayableLink<CPlayable>& link = sequence->children_[path.back().next++];
        CSequencedPlayable* child = asSequence(link.get());
        if (!child) continue;
        if (onPath.contains(child)) {
            const auto holder = std::ranges::find(path, child, &Visit::sequence);
            child->setParent(holder == path.begin() ? nullptr : std::prev(holder)->sequence);
            link = {};
        } else if (seen.insert(child).second) {
            onPath.insert(child);
            path.push_back({child, 0});
        }
    }
}

CPlayable* CSequencedPlayable::childAt(int index) const {
    return index >= 0 && index <= lastChild() ? children_[static_cast<std::size_t>(index)].get() : nullptr;
}

CXString CSequencedPlayable::getParameter() const { return mode_ == kByParameter ? getParam().Right(1) : getParam(); }

int CSequencedPlayable::select(const CXString& parameter) const {
    const int value = parameter.IsString() ? valueOfDigit(parameter.GetAt(0)) : -1;
    return value >= 0 && value <= lastChild() ? value : -1;
}

// What starts may run script, which may do away with it.
void CSequencedPlayable::start(int index, bool passParameter) {
    const PlayableLink<CPlayable> link(childAt(index));
    CPlayable* child = link.get();
    if (!child) return;
    if (passParameter) child->setParameter(getParam());
    child->setNotifier(this);
    child->play();
    child = link.get();
    if (!child) return;
    child->setVolume(volume_);
    child->setPanning(panning_);
    if (frequency_ > 0) child->setFrequency(frequency_);
}

void CSequencedPlayable::play() {
    // Trees may be too deep to be played.
    if (!ScriptScope::mayEnter()) return;
    const ScriptScope scope;
    const unsigned turn = ++turn_;
    status_ &= ~kPaused;
    notify(kTellStarted);
    // A handler that has stopped it, or played it anew, has the last word.
    if (turn != turn_ || children_.empty()) return;
    if (mode_ == kInTurn) {
        playInTurn(turn);
    } else if (mode_ == kRandom) {
        index_ = CXRandom::draw() % (lastChild() + 1);
        start(index_, true);
        if (turn != turn_) return;
        status_ |= kPlaying;
        ++step_;
    } else {
        playSelected();
    }
}

// A child that isn't waited for is followed at once by the next one.
void CSequencedPlayable::playInTurn(unsigned turn) {
    index_ = step_ = -1;
    for (bool waits = false; step_ < lastChild() && !waits;) {
        index_ = ++step_;
        start(index_, true);
        if (turn != turn_) return;
        const CPlayable* child = childAt(index_);
        waits = !child || child->getWaitMode();
    }
    status_ |= kPlaying;
}

void CSequencedPlayable::playSelected() {
    const int selected = select(getParam());
    if (selected < 0) return;
    setParameter(getParameter());
    index_ = selected;
    status_ |= kPlaying;
    start(selected, true);
}

int CSequencedPlayable::next() {
    const ScriptScope scope;
    // Somebody else's step may have stopped it in this very frame.
    if (!isPlaying() || isPaused() || index_ == -1) return step_;
    const CPlayable* child = childAt(index_);
    if (mode_ == kByParameter || (child && child->isPlaying())) return step_;
    if (mode_ == kInTurn && step_ < lastChild()) {
        if (child) setParameter(child->getParam());
        ++index_;
        ++step_;
        start(index_, true);
    } else {
        stop(mode_ == kInTurn);
    }
    return step_;
}

// With no child yet it still ends: a parameter that names no child leaves a sequence that plays nothing.
void CSequencedPlayable::stop(bool tell) {
    if (!isPlaying()) return;
    const ScriptScope scope;
    const unsigned turn = ++turn_;
    if (CPlayable* child = childAt(index_)) child->stop(tell);
    if (turn == turn_) status_ &= ~kPlaying;
}

void CSequencedPlayable::pause() {
    if (CPlayable* child = childAt(index_)) child->pause();
    if (isPlaying() || isPaused()) status_ |= kPaused;
}

void CSequencedPlayable::resume() {
    const ScriptScope scope;
    status_ &= ~kPaused;
    if (CPlayable* child = childAt(index_)) child->resume();
}

// A number that is no child's changes nothing.
void CSequencedPlayable::seek(int position) {
    int target = position;
    if (position == kSeekFirst) target = 0;
    if (position == kSeekLast) target = lastChild();
    if (position == kSeekBack) target = std::max(index_ - 1, 0);
    if (position == kSeekOn) target = std::min(index_ + 1, lastChild());
    if (target < 0 || target > lastChild()) return;
    const ScriptScope scope;
    const unsigned turn = ++turn_;
    if (CPlayable* child = childAt(index_)) child->stop(true);
    if (turn != turn_) return;
    index_ = step_ = target;
    start(index_, false);
}

bool CSequencedPlayable::onPlayableFinished(CPlayable*) {
    const ScriptScope scope;
    notify(kTellFinished);
    return false;
}

// Without recursion: a file may nest deeper than the stack is high.
std::vector<PlayableLink<CPlayable>> CSequencedPlayable::below() const {
    struct Visit {
        const CSequencedPlayable* sequence;
        std::size_t next;
    };
    std::vector<PlayableLink<CPlayable>> found;
    std::unordered_set<const CPlayable*> seen = {this};
    std::vector<Visit> path = {
        {this, 0}
    };
    while (!path.empty()) {
        const CSequencedPlayable* sequence = path.back().sequence;
        if (path.back().next == sequence->children_.size()) {
            path.pop_back();
            continue;
        }
        CPlayable* child = sequence->children_[path.back().next++].get();
        if (!child || !seen.insert(child).second) continue;
        found.emplace_back(child);
        if (const CSequencedPlayable* inner = asSequence(child)) path.push_back({inner, 0});
    }
    return found;
}

std::vector<CAnimo*> CSequencedPlayable::getAllAnimations() const {
    std::vector<CAnimo*> animations;
    for (const auto& link : below()) {
        CAnimo* animation = animationOf(link.get());
        if (animation && std::ranges::find(animations, animation) == animations.end()) animations.push_back(animation);
    }
    return animations;
}

std::vector<CPlayable*> CSequencedPlayable::getAllOfType(int type) const {
    std::vector<CPlayable*> playables;
    for (const auto& link : below())
        if (link.get()->getType() == type) playables.push_back(link.get());
    return playables;
}

CAnimo* CSequencedPlayable::animationToAsk(int which) const {
    constexpr int kFirst = 1;
    const std::vector<CAnimo*> animations = getAllAnimations();
    const auto at = std::ranges::find_if(
        animations, [which](const CAnimo* animation) { return which == kFirst || animation->IsPlaying(); });
    return at == animations.end() ? nullptr : *at;
}

CXRect CSequencedPlayable::getBoundingBox(int which) const {
    const CAnimo* animation = animationToAsk(which);
    return animation ? animation->GetBoundingBox() : CXRect();
}

CXPoint CSequencedPlayable::getPosition(int which) const {
    const CAnimo* animation = animationToAsk(which);
    return animation ? animation->GetPosition() : CXPoint();
}

CPlayable* CSequencedPlayable::get(const CXString& key) {
    CXString left = key;
    CPlayable* node = this;
    for (const CSequencedPlayable* sequence = this; sequence && left.IsString(); sequence = asSequence(node)) {
        const bool isSelected = sequence->mode_ == kByParameter;
        CPlayable* child = sequence->childAt(isSelected ? sequence->select(left) : 0);
        if (!child) break;
        if (isSelected) left.right(1);
        node = child;
    }
    return node;
}

void CSequencedPlayable::move(int dx, int dy) {
    const ScriptScope scope;
    for (const auto& link : below())
        if (link.get() && !asSequence(link.get())) link.get()->move(dx, dy);
}

void CSequencedPlayable::setPosition(int x, int y) {
    const ScriptScope scope;
    for (const auto& link : below())
        if (link.get() && !asSequence(link.get())) link.get()->setPosition(x, y);
}

void CSequencedPlayable::alwaysOnTop() {
    for (const auto& link : below())
        if (!asSequence(link.get())) link.get()->alwaysOnTop();
}

void CSequencedPlayable::setVisibility(bool visible) {
    const ScriptScope scope;
    CPlayable::setVisibility(visible);
    std::vector<CSequencedPlayable*> open = {this};
    while (!open.empty()) {
        const CSequencedPlayable* sequence = open.back();
        open.pop_back();
        for (std::size_t i = 0; i < sequence->children_.size(); ++i) {
            CPlayable* child = sequence->children_[i].get();
            if (!child || child->isVisible() == visible) continue;
            if (CSequencedPlayable* inner = asSequence(child)) {
                inner->CPlayable::setVisibility(visible);
                open.push_back(inner);
            } else {
                child->setVisibility(visible);
            }
        }
    }
}
