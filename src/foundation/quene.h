// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xvector.h"

// Queues over an array, which own nothing. The names are part of the interface.
class CQuene : public CXArray {
public:
    explicit CQuene(int capacity = 101, float factor = 0.75F) : CXArray(capacity, factor) {}

    void push(void* element) { add(element); }
    virtual void* pop() = 0;  // null when empty
};

class CFifoQuene : public CQuene {
public:
    using CQuene::CQuene;
    void* pop() override;  // the first element
};

class CLifoQuene : public CQuene {
public:
    using CQuene::CQuene;
    void* pop() override;  // the last element
};

class CXQuene : public CXArray {
public:
    explicit CXQuene(int capacity = 101, float factor = 0.75F) : CXArray(capacity, factor) {}

    void push(CXObject* element) { add(element); }
    virtual CXObject* pop() = 0;  // null when empty
};

class CXFifoQuene : public CXQuene {
public:
    using CXQuene::CXQuene;
    CXObject* pop() override;
};

class CXLifoQuene : public CXQuene {
public:
    using CXQuene::CXQuene;
    CXObject* pop() override;
};
