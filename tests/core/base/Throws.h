// Whether an action throws the given framework exception, which is deleted as its catcher must.
#pragma once

#include "quor/platform/Base.h"

template <class Exception = CInvalidArgException, class Action>
bool throwsException(Action action) {
    try {
        action();
    } catch (Exception* e) {
        e->Delete();
        return true;
    }
    return false;
}
