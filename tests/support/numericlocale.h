#pragma once

#include <QByteArray>
#include <QLocale>

namespace quillon::test {

/// Makes a locale the one that numbers are written by, for as long as it lives: LC_NUMERIC, Qt's default and
/// the C library's. Ends the test when the system lacks the locale.
class NumericLocale
{
public:
    explicit NumericLocale(const QByteArray &name);
    NumericLocale(const NumericLocale &) = delete;
    NumericLocale &operator=(const NumericLocale &) = delete;
    ~NumericLocale();

private:
    QByteArray m_all;
    QByteArray m_numeric;
    QByteArray m_library;
    QLocale m_default;
};

} // namespace quillon::test
