#pragma once

#include <array>

namespace quillon {

/// The upper half of an 8-bit code page: the characters of the bytes 128 to 255, all different.
struct CodePageTable
{
    int number;
    std::array<char16_t, 128> upper;
};

/// The table of Windows code page 1250, 1251, 1252, 1253, 1254 or 1257; null for any other number.
[[nodiscard]] const CodePageTable *codePageTable(int number);

} // namespace quillon
