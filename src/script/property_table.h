// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "definition/element.h"
#include "storage/archive.h"

// What a definition and a stored record say of an object: one table for both, in the order in which the keys are read.
template <class T>
struct PropertyRow {
    std::string_view key;  // in a definition; "": it has no key
    std::variant<bool T::*, int T::*, CXString T::*> member;
    int place;  // in the stored record, from 1 up; 0: it isn't stored
};

// Fills in what the element says, absent keys as false, 0 and "".
template <class T>
void readProperties(const CMElement* element, std::span<const PropertyRow<T>> rows, T& target) {
    for (const PropertyRow<T>& row : rows) {
        if (row.key.empty()) continue;
        const CXString key(row.key);
        if (const auto* truth = std::get_if<bool T::*>(&row.member)) {
            target.*(*truth) = element->getPropertyBoolValue(key);
        } else if (const auto* number = std::get_if<int T::*>(&row.member)) {
            target.*(*number) = element->getPropertyIntValue(key);
        } else if (const auto* text = std::get_if<CXString T::*>(&row.member)) {
            target.*(*text) = element->getPropertyValue(key);
        }
    }
}

// Writes the record or reads it, whichever way the archive goes.
template <class T>
void serializeRecord(CXArchive* archive, std::span<const PropertyRow<T>> rows, T& target) {
    std::vector<const PropertyRow<T>*> record;
    for (const PropertyRow<T>& row : rows) {
        if (row.place > 0) record.push_back(&row);
    }
    std::sort(record.begin(), record.end(), [](const auto* a, const auto* b) { return a->place < b->place; });
    for (const PropertyRow<T>* row : record) {
        std::visit(
            [&](auto member) {
                if (archive->isStoring()) {
                    *archive << target.*member;
                } else {
                    *archive >> target.*member;
                }
            },
            row->member);
    }
}
