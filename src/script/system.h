// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "script/object.h"
#include "script/runner.h"

// SYSTEM, of which each running scene has one: date and time of the platform's clock, in UTC, read anew by each call.
// The names of days and months are Polish, in plain letters.
class CMC_System : public CMC_Object {
public:
    static constexpr int kType = 11000;

    CMC_System() : CMC_Object("SYSTEM", kType) {}

    int getDate();  // year - 2000, month and day as one number, the day as getDay gives it: 30518 is 17 May 2003
    CXString getDateString();  // "18/Maj/2003": the day as getDay gives it
    int getDay();              // one above the calendar's; stored applications count on it
    int getDayOfWeek();        // 1: Sunday
    CXString getDayOfWeekString();
    int getMonth();
    CXString getMonthString();
    int getYear();
    CXString getTimeString();  // "9:5", without leading zeros
    int getHour();
    int getMinutes();
    int getSeconds();
    int getSystemTime();  // milliseconds from an arbitrary start; wraps
};

// It knows no generic methods.
class CMC_System_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
