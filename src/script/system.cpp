// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include "script/system.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "platform/platform.h"
#include "script/method_table.h"

namespace {

constexpr std::array kDays = {"Niedziela", "Poniedzialek", "Wtorek", "Sroda", "Czwartek", "Piatek", "Sobota"};
constexpr std::array kMonths = {"Styczen", "Luty",     "Marzec",   "Kwiecien",    "Maj",      "Czerwiec",
                                "Lipiec",  "Sierpien", "Wrzesien", "Pazdziernik", "Listopad", "Grudzien"};

struct Moment {
    int year = 0, month = 0, day = 0, weekday = 0, hour = 0, minute = 0, second = 0;  // month from 1, Sunday 0
};

Moment now() {
    using namespace std::chrono;
    // A machine without a clock stands at the beginning of the calendar's count.
    const sys_seconds time{seconds(std::max<std::int64_t>(0, platform::current().clock.utcSeconds()))};
    const sys_days date = floor<days>(time);
    const year_month_day calendar(date);
    const hh_mm_ss clock(time - date);
    return {static_cast<int>(calendar.year()),
            static_cast<int>(static_cast<unsigned>(calendar.month())),
            static_cast<int>(static_cast<unsigned>(calendar.day())),
            static_cast<int>(weekday(date).c_encoding()),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

constexpr MethodRow kMethods[] = {
    {1,  "GETDATE",            bind<&CMC_System::getDate>           },
    {2,  "GETDATESTRING",      bind<&CMC_System::getDateString>     },
    {3,  "GETDAY",             bind<&CMC_System::getDay>            },
    {4,  "GETDAYOFWEEK",       bind<&CMC_System::getDayOfWeek>      },
    {5,  "GETDAYOFWEEKSTRING", bind<&CMC_System::getDayOfWeekString>},
    {6,  "GETMONTH",           bind<&CMC_System::getMonth>          },
    {7,  "GETMONTHSTRING",     bind<&CMC_System::getMonthString>    },
    {8,  "GETYEAR",            bind<&CMC_System::getYear>           },
    {9,  "GETTIMESTRING",      bind<&CMC_System::getTimeString>     },
    {11, "GETMINUTES",         bind<&CMC_System::getMinutes>        },
    {12, "GETSECONDS",         bind<&CMC_System::getSeconds>        },
    {13, "GETSYSTEMTIME",      bind<&CMC_System::getSystemTime>     },
};
static_assert(isMethodTable(kMethods));

}  // namespace

int CMC_System::getDate() {
    const Moment t = now();
    return ((t.year - 1900) * 100 + t.month - 1) * 100 + t.day - 999899;
}

CXString CMC_System::getDateString() {
    const Moment t = now();
    return CXString::toString(t.day + 1) + "/" + getMonthString() + "/" + CXString::toString(t.year);
}

int CMC_System::getDay() { return now().day + 1; }
int CMC_System::getDayOfWeek() { return now().weekday + 1; }
CXString CMC_System::getDayOfWeekString() { return kDays[static_cast<std::size_t>(now().weekday)]; }
int CMC_System::getMonth() { return now().month; }
CXString CMC_System::getMonthString() { return kMonths[static_cast<std::size_t>(now().month - 1)]; }
int CMC_System::getYear() { return now().year; }

CXString CMC_System::getTimeString() {
    const Moment t = now();
    return CXString::toString(t.hour) + ":" + CXString::toString(t.minute);
}

int CMC_System::getHour() { return now().hour; }
int CMC_System::getMinutes() { return now().minute; }
int CMC_System::getSeconds() { return now().second; }
int CMC_System::getSystemTime() { return static_cast<int>(platform::current().clock.ticks()); }

void CMC_System_Runner::prepareMthHashSet() { enterMethods(kMethods); }
