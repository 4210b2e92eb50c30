// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "foundation/xobject.h"

// An entry of the window's queue: a code and two numbers on their way from one object to another. Owns neither.
class CMessage : public CXObject {
public:
    CMessage(CXObject* sender, CXObject* receiver, int code, int parameter1, int parameter2, bool notify)
        : sender_(sender),
          receiver_(receiver),
          code_(code),
          parameter1_(parameter1),
          parameter2_(parameter2),
          notify_(notify) {}

    CXObject* getSender() const { return sender_; }
    CXObject* getReceiver() const { return receiver_; }
    int getCode() const { return code_; }
    int getParameter1() const { return parameter1_; }
    int getParameter2() const { return parameter2_; }
    bool notify() const { return notify_; }  // whether the sender wants to hear of the receiver's answer
    void setResult(int result) { result_ = result; }
    int getResult() const { return result_; }

private:
    CXObject* sender_;
    CXObject* receiver_;
    int code_;
    int parameter1_;
    int parameter2_;
    bool notify_;
    int result_ = 0;
};
