// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

#include "script/method_table.h"
#include "script/runner_factory.h"

// Prints the reference of script methods; with --check FILE, compares it with that file.
namespace {

struct Section {
    const char* title;
    int type;
    bool isGeneric;  // the methods that all objects have, and no others
};

constexpr Section kSections[] = {
    {"Statements, `@NAME(...)`",                  0,     false},
    {"Every object",                              13,    true },
    {"INTEGER, DOUBLE, BOOL, STRING, EXPRESSION", 1,     false},
    {"BEHAVIOUR",                                 13,    false},
    {"CONDITION, COMPLEXCONDITION",               10,    false},
    {"TIMER",                                     2007,  false},
    {"MOUSE",                                     100,   false},
    {"KEYBOARD",                                  101,   false},
    {"BUTTON",                                    2001,  false},
    {"ANIMO",                                     2000,  false},
    {"IMAGE",                                     2008,  false},
    {"SOUND",                                     2005,  false},
    {"SEQUENCE",                                  2004,  false},
    {"FONT",                                      2002,  false},
    {"TEXT",                                      2006,  false},
    {"EDITBOX",                                   2009,  false},
    {"DIALOG",                                    2013,  false},
    {"CANVAS",                                    2020,  false},
    {"PATTERN",                                   2021,  false},
    {"SCROLL",                                    2022,  false},
    {"CANVAS_OBSERVER",                           103,   false},
    {"FILTER",                                    2014,  false},
    {"STATICFILTER",                              2015,  false},
    {"GROUP",                                     3000,  false},
    {"ARRAY",                                     3001,  false},
    {"VECTOR",                                    2016,  false},
    {"PATH",                                      2017,  false},
    {"FIFO, LIFO",                                2018,  false},
    {"CNVLOADER",                                 12000, false},
    {"Scene",                                     1002,  false},
    {"Episode",                                   1001,  false},
    {"Application",                               1000,  false},
};

constexpr int kFirstGeneric = 96;

std::string parameters(std::string_view letters) {
    std::string text;
    for (const char letter : letters) {
        if (!text.empty()) text += ", ";
        switch (letter) {
            case 'i':
                text += "INTEGER";
                break;
            case 'd':
                text += "DOUBLE";
                break;
            case 'b':
                text += "BOOL";
                break;
            case 's':
                text += "STRING";
                break;
            case 'v':
                text += "any value";
                break;
            default:
                text += "...";
        }
    }
    return text;
}

std::string reference() {
    std::ostringstream out;
    out << "# Script methods\n\n"
           "Made by `list_methods` from the tables in the code; don't edit it. A parameter that is missing reads as "
           "0,\n"
           "FALSE or the empty text. Numbers are the ids by which compiled code calls a method.\n";
    CMC_RunnerFactory::initialize();
    for (const Section& section : kSections) {
        out << "\n## " << section.title << "\n\n| Method | Id | Parameters |\n|---|---|---|\n";
        for (const MethodRow* row : CMC_RunnerFactory::getRunner(section.type)->rows()) {
            if (row == nullptr || (row->id >= kFirstGeneric) != section.isGeneric) continue;
            out << "| `" << row->name << "` | " << row->id << " | " << parameters(row->does.params) << " |\n";
        }
    }
    CMC_RunnerFactory::done();
    return out.str();
}

}  // namespace

int main(int argc, char** argv) {
    const std::string text = reference();
    if (argc == 3 && std::string_view(argv[1]) == "--check") {
        std::ifstream file(argv[2], std::ios::binary);
        const std::string stands(std::istreambuf_iterator<char>(file), {});
        if (stands == text) return 0;
        std::cerr << argv[2] << " is out of date: write it anew with list_methods > docs/scripting.md\n";
        return 1;
    }
    std::cout << text;
    return 0;
}
