#pragma once

#include "platform/codepage.h"
#include "platform/datetime.h"
#include "platform/numbers.h"

namespace quillon {

/// What the user's locale decides. Read once at start and handed to whoever needs it.
struct Regional
{
    CodePage codePage;
    NumberFormat numbers;
    MonthNames months;

    /// The settings of LANG and the LC_ variables, and QUILLON_CODEPAGE.
    [[nodiscard]] static Regional fromEnvironment();
};

} // namespace quillon
