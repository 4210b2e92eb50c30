// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

#include "sound/sequence_element.h"

// Plays its children one after the other, any one of them, or the one that a digit of its parameter names. The window's
// animation manager asks it every 100 ms whether the child has ended; the step on to the next one is made there, not
// when the child tells its end.
//
// A child may be in several sequences, but none within itself: see `breakCircles`.
class CSequencedPlayable : public SequenceElement {
public:
    static constexpr int kType = 7;
    enum Mode { kInTurn = 1, kRandom = 2, kByParameter = 3 };

    explicit CSequencedPlayable(CWindow* window);
    ~CSequencedPlayable() override;

    void addChild(CPlayable* child) override;  // not owned
    // Empties the places of children by which this sequence, or one below it, would hold itself. To be called once all
    // children are there and before anything plays.
    void breakCircles();
    void leave() override;

    using CPlayable::getParameter;
    CXString getParameter() const override;  // without the digit that this sequence has taken
    using CPlayable::play;
    void play() override;
    void stop(bool tell) override;
    void pause() override;
    void resume() override;
    void seek(int position) override;  // also -1: the first child, -2: the last
    int next() override;
    bool onPlayableFinished(CPlayable* playable) override;  // every step's end is told as the sequence's

    // Of all that stands below, in the order of the file and each once.
    std::vector<CAnimo*> getAllAnimations() const;
    std::vector<CPlayable*> getAllOfType(int type) const;
    // Of the first animation with 1, else of the first that plays; zeros when there is none.
    CXRect getBoundingBox(int which) const;
    CXPoint getPosition(int which) const;
    // The playable that the key's digits lead to, from here down.
    CPlayable* get(const CXString& key);

    // What stands in several sequences below is moved once.
    void move(int dx, int dy) override;
    void setPosition(int x, int y) override;
    using CPlayable::move;
    using CPlayable::setPosition;
    void setVisibility(bool visible) override;
    void alwaysOnTop() override;

private:
    CPlayable* childAt(int index) const;  // null: none, or gone
    int lastChild() const { return static_cast<int>(children_.size()) - 1; }
    int select(const CXString& parameter) const;  // the child that the first digit names; -1: none
    void start(int index, bool passParameter);
    void playInTurn(unsigned turn);
    void playSelected();
    std::vector<PlayableLink<CPlayable>> below() const;
    CAnimo* animationToAsk(int which) const;

    std::vector<PlayableLink<CPlayable>> children_;
    int index_ = -1;     // of the current child; -1: none yet
    unsigned turn_ = 0;  // moves on whenever somebody plays, seeks or stops, so that an earlier play gives way
};
