// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "foundation/quene.h"
#include "script/object.h"
#include "script/runner.h"

// FIFO and LIFO: queues of values, which fire ONEMPTY when a script wants more than there is.
//
// The elements are pool variables: each takes a slot until it is popped, or until the queue leaves the scene.
// The names are part of the interface.
class CMC_Quene : public CMC_Object {
public:
    ~CMC_Quene() override;

    virtual CXQuene* getQuene() { return quene_.get(); }

    void push(CMC_Variable* value);  // a copy of it
    // The next element, the caller's to flush. An empty queue fires ONEMPTY first, whose handler may push; null when it
    // doesn't.
    CMC_Variable* pop();
    int getSize() const { return quene_->size(); }
    bool isEmpty() const { return quene_->isEmpty(); }

    std::span<const std::string_view> getBehavioursList() const override;
    void retire() override;

protected:
    CMC_Quene(CMC_Scene* scene, CMElement* element, int type, std::unique_ptr<CXQuene> quene);  // null element: "temp"

private:
    void flushElements();

    std::unique_ptr<CXQuene> quene_;  // of CMC_Variable
};

class CMC_FifoQuene : public CMC_Quene {
public:
    static constexpr int kType = 2018;

    explicit CMC_FifoQuene(CMC_Scene* scene) : CMC_FifoQuene(scene, nullptr) {}
    CMC_FifoQuene(CMC_Scene* scene, CMElement* element)
        : CMC_Quene(scene, element, kType, std::make_unique<CXFifoQuene>()) {}
};

class CMC_LifoQuene : public CMC_Quene {
public:
    static constexpr int kType = 2019;

    explicit CMC_LifoQuene(CMC_Scene* scene) : CMC_LifoQuene(scene, nullptr) {}
    CMC_LifoQuene(CMC_Scene* scene, CMElement* element)
        : CMC_Quene(scene, element, kType, std::make_unique<CXLifoQuene>()) {}
};

class CMC_Quene_Runner : public CMC_Runner {
public:
    void prepareMthHashSet() override;
};
