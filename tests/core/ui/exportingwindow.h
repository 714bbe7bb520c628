#pragma once

#include "support/mainwindow.h"
#include "support/opened.h"

#include <QGuiApplication>

namespace quillon::test {

/// The newest month begins at row 2, so that it is closed by row 1.
inline const QByteArray entries = "E201|05/07/2010 21:34:10|Es|87.6|Bilbao|E|oneCRLFtwo|RNE_1|10|812.4|||\r\n"
                                  "D382|05/07/2010 21:40:00|MS|89|K\xF6ln & Bonn|D||WDR 2|100|50|||\r\n"
                                  "F201|03/06/2010 08:15:00|Tropo|90.1|Paris|F||FIP|10||||\r\n"
                                  "F202|02/06/2010 08:15:00||100.25|||||||||\r\n";
inline const QByteArray sites = "Bilbao|E|43.263|-2.935|1|\r\nK\xF6ln & Bonn|D|50.9|7.0|2|\r\n"
                                "Madrid|E|40.4|-3.7|3|\r\n";

/// A main window with four receptions, that opens nothing.
class ExportingWindow : public MainWindow
{
public:
    Opened opened;

    explicit ExportingWindow(const QByteArray &settings = {})
    {
        directory.write(QStringLiteral("LOGBOOK.INI"), "LOG_BOOK_CALLSIGN=DL1ABC\r\n" + settings);
        start(entries, sites);
    }
    void writeTemplates()
    {
        directory.write(QStringLiteral("quillon_index.template"),
            "<h1>$CALLSIGN $TOTAL $VERSION</h1>\r\n<table>\r\n$RAWDATA\r\n</table>\r\n");
        directory.write(QStringLiteral("quillon_log.template"), "<h1>$MONTHYEAR</h1>\n$RAWDATA\n");
        directory.write(QStringLiteral("quillon_mapview.htm"), "<title>Map</title>\n");
    }
    /// The grid is there and the pointer is the usual one.
    [[nodiscard]] bool isCalm() { return grid().isVisible() && !QGuiApplication::overrideCursor(); }
    /// The one message of a command that failed; nothing was opened.
    QString failure()
    {
        const QStringList texts = answers.takeTexts();
        return texts.size() == 1 && opened.take().isEmpty() ? texts.first()
                                                            : texts.join(QStringLiteral("\n---\n"));
    }
};

/// The path of a file of the window's directory.
inline QString in(ExportingWindow &window, const QString &name)
{
    return window.directory.file(name);
}

} // namespace quillon::test
