#pragma once

#include "support/mainwindow.h"

namespace quillon::test {

/// A log of one entry, and its transmitter.
inline const QByteArray oneEntry =
    "D3C3|12/06/2010 18:22:05|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|812.4|fml=none#|4711|\r\n";
inline const QByteArray oneTransmitter = "Bilbao|E|43.2630|-2.9350|812.4|\r\n";

/// The controls whose state the form decides, in the order of the table of states.
inline const QStringList &controls()
{
    using namespace Qt::StringLiterals;
    static const QStringList names {u"Text1"_s, u"Text2"_s, u"Text3"_s, u"Text5"_s, u"Text6"_s, u"Text7"_s,
        u"Text8"_s, u"Text9"_s, u"Text10"_s, u"Combo1"_s, u"Combo2"_s, u"Combo3"_s, u"uid"_s, u"Command1"_s,
        u"Command2"_s, u"Command3"_s, u"Command4"_s, u"Command5"_s, u"Command6"_s, u"Command7"_s,
        u"Command8"_s, u"Command9"_s, u"Command10"_s, u"Command11"_s, u"Command12"_s, u"Command13"_s,
        u"Command14"_s, u"Command15"_s};
    return names;
}

/// Those of them that are disabled when no entry is worked on.
inline const QStringList &lockedInBrowseState()
{
    using namespace Qt::StringLiterals;
    static const QStringList names {u"Text2"_s, u"Text3"_s, u"Text6"_s, u"Text7"_s, u"Text10"_s, u"Combo1"_s,
        u"Combo2"_s, u"Command1"_s, u"Command3"_s, u"Command5"_s, u"Command9"_s, u"Command11"_s,
        u"Command15"_s};
    return names;
}

/// Those of them that are disabled now.
inline QStringList disabled(MainWindow &window)
{
    QStringList names;
    for (const QString &name : controls()) {
        if (!window.enabled(name)) {
            names += name;
        }
    }
    return names;
}

/// Fills the whole form.
inline void typeEntry(MainWindow &window)
{
    using namespace Qt::StringLiterals;
    window.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, u"f201"_s, u"Text8"_s, u"FIP"_s, u"Combo2"_s, u"Tropo"_s,
        u"Text3"_s, u"weak\nbut clear"_s, u"uid"_s, u"99"_s, u"Combo3"_s, u"F"_s, u"Text5"_s, u"Paris"_s,
        u"Text6"_s, u"10kw"_s, u"Text7"_s, u"48.85"_s, u"Text10"_s, u"2.29"_s});
}

/// A logbook of that many entries, a second apart.
inline QByteArray numberedLog(int entries)
{
    QByteArray log;
    for (int i = 0; i < entries; ++i) {
        log += logLine(QByteArray::number(0x1000 + i, 16).toUpper(),
            "12/06/2010 " + QByteArray::number(i / 3600).rightJustified(2, '0') + ':'
                + QByteArray::number(i / 60 % 60).rightJustified(2, '0') + ':'
                + QByteArray::number(i % 60).rightJustified(2, '0'),
            "87.6", "NAME");
    }
    return log;
}

/// Logs a station, and gives the line that it makes in the file.
inline QByteArray addStation(MainWindow &window, const QString &piCode = QStringLiteral("F201"))
{
    using namespace Qt::StringLiterals;
    window.click("Command2");
    window.fill({u"Text9"_s, u"88.2"_s, u"Text1"_s, piCode, u"Combo3"_s, u"F"_s, u"Text2"_s,
        u"01/07/2010 09:05:00"_s});
    window.click("Command1");
    return piCode.toLatin1() + "|01/07/2010 09:05:00||88.2||F|||||||\r\n";
}

} // namespace quillon::test
