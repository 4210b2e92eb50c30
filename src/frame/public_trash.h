// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"
#include "frame/timer.h"

// Objects that couldn't be deleted where they were given up. Every 10 seconds those that are marked are deleted; one
// right behind a deleted one waits for the next time.
class CPublicTrash : public CXVector, public CTimerNotificator {
public:
    explicit CPublicTrash(CXTimer* timers);
    ~CPublicTrash() override;  // deletes the marked ones

    void onTimer(int id) override;

private:
    CXTimer* timers_;
};
