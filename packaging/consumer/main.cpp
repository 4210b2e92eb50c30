// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdio>
#include <memory>

#include "frame/application.h"
#include "frame/command_line.h"
#include "frame/config.h"
#include "frame/window.h"
#include "platform/headless/headless.h"

// Plays a small application of its own in a temporary folder and looks at what it left.
int main() {
    headless::HeadlessPlatform platform({.messages = stdout, .debug = stderr});
    platform.write("Dane/application.def",
                   "OBJECT=APP\nAPP:TYPE=APPLICATION\nAPP:EPISODES=EP\nAPP:STARTWITH=EP\nAPP:PATH=APP\n"
                   "OBJECT=EP\nEP:TYPE=EPISODE\nEP:SCENES=S\nEP:STARTWITH=S\nEP:PATH=EP\n"
                   "OBJECT=S\nS:TYPE=SCENE\nS:PATH=S\n");
    platform.write("Dane/APP/APP.cnv", "");
    platform.write("Dane/EP/EP.cnv", "");
    platform.write("Dane/S/S.cnv",
                   "OBJECT=N\nN:TYPE=INTEGER\nN:TOINI=TRUE\n"
                   "OBJECT=__INIT__\n__INIT__:TYPE=BEHAVIOUR\n__INIT__:CODE={N^SET(42);APP^EXIT();}\n");
    bool left = false;
    {
        CCommandLine6 commandLine("-nosound");
        CWindow window(nullptr, &commandLine, commandLine.getResolution(), nullptr);
        CApplication application(&window, "application.ini", "Consumer", &commandLine);
        if (window.SetDisplayMode(commandLine.getResolution(), 16) != 0) return 1;
        window.OnCreate();
        application.preinitializeApplication();
        window.OnActivateApp(true);
        for (int frame = 0; frame < 10 && !left; ++frame) {
            platform.clock.advance(10);
            left = window.domodal();
        }
    }
    const auto written = headless::DiskFiles(platform.folder()).readFile("application.ini");
    const bool kept = written && written->find("N=42") != std::string::npos;
    std::printf("consumer: the application %s and %s its value\n", left ? "left" : "did not leave",
                kept ? "kept" : "lost");
    return left && kept ? 0 : 1;
}
