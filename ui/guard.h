#pragma once

#include "platform/runtimeerror.h"
#include "ui/messages.h"
#include "ui/requestaborted.h"

#include <utility>

class QWidget;

namespace quillon {

/// Does the work of an event handler. The run-time error that stops it is shown here, at the event boundary,
/// and the program goes on. A request that was ended on purpose stops it without a word. True when the work
/// was done.
template<typename Work>
bool guarded(QWidget *parent, Work &&work)
{
    try {
        std::forward<Work>(work)();
        return true;
    } catch (const RuntimeError &error) {
        showRuntimeError(parent, error);
        return false;
    } catch (const RequestAborted &) {
        return false;
    }
}

} // namespace quillon
