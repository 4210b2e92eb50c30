// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Built three times into modules for the tests, which hand in what the module is to give and read what was called.
#include <cstring>

class CWindow;
class CUnit6;
class CMC_Scene;
class CMC_ExternObject;

extern "C" {
CUnit6* theUnit = nullptr;
char theCalls[64] = "";
}

#ifdef EXTENSION

namespace {
int interfaceStandIn = 0;
}

void create(CMC_Scene*) {}
CMC_ExternObject* getModuleInterface() { return reinterpret_cast<CMC_ExternObject*>(&interfaceStandIn); }
void release() {}

#else

bool create(CWindow*) {
    std::strcat(theCalls, "create ");
    return true;
}

CUnit6* getUnitInterface() {
    std::strcat(theCalls, "unit ");
    return theUnit;
}

#ifndef WITHOUT_RELEASE
bool release() {
    std::strcat(theCalls, "release ");
    return true;
}
#endif

#endif
