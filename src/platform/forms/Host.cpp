#include "platform/forms/Host.h"

#include "platform/basic/RuntimeError.h"

namespace tarmel::forms {

namespace {
Host* current = nullptr;
}

Host& host() {
    if (!current) throw basic::RuntimeError(basic::error::ObjectNotSet);
    return *current;
}

void setHost(Host* host) {
    current = host;
}

int MsgBox(const QString& text, int buttons, const QString& title) {
    return host().ShowBox({text, buttons, title.isEmpty() ? kProgramName : title});
}

}  // namespace tarmel::forms
