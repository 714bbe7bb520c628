#pragma once

#include "net/requestaborted.h"
#include "platform/runtimeerror.h"
#include "ui/messages.h"

#include <exception>
#include <utility>

class QWidget;

namespace quillon {

/// Does the work of an event handler. The run-time error that stops it is shown here, at the event boundary,
/// and the program goes on. A request that was ended on purpose stops it without a word. True when the work
/// was done. Any other exception, such as exhausted memory, is shown as an internal error.
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
    } catch (const std::exception &error) {
        showRuntimeError(
            parent, RuntimeError(ErrorName::InternalError, QString::fromLocal8Bit(error.what())));
        return false;
    }
}

} // namespace quillon
