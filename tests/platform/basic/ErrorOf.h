#pragma once

#include "platform/basic/RuntimeError.h"

/// The number of the run-time error that `step` ends with; 0 when it ends well.
template <typename Step>
int errorOf(Step&& step) {
    try {
        step();
    } catch (const tarmel::basic::RuntimeError& e) {
        return e.number();
    }
    return 0;
}
