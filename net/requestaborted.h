#pragma once

#include <exception>

namespace quillon {

/// A request that was waited for was ended on purpose, or the program is ending. Not a failure to show: the
/// command stops quietly.
class RequestAborted : public std::exception
{
public:
    [[nodiscard]] const char *what() const noexcept override { return "The request was ended"; }
};

} // namespace quillon
