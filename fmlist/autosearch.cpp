#include "fmlist/autosearch.h"

#include "core/linebreaks.h"
#include "fmlist/tags.h"

namespace quillon {

using namespace Qt::StringLiterals;

DayWindow DayWindow::of(DateTime moment)
{
    CivilTime day = civil(moment);
    day.hour = 0;
    day.minute = 0;
    day.second = 0;
    const qint64 midnight = fromCivil(day).value_or(moment).seconds;
    return {{midnight - secondsPerDay}, {midnight + secondsPerDay}};
}

DayWindow dayWindow(const QString &answer, const MonthNames &months)
{
    return DayWindow::of(toDateTime(answer, months, u"The day to search FMList for"_s));
}

bool isToBeSearched(const LogEntry &entry, DayWindow window)
{
    return entry.piCode != deletedPiCode && window.contains(entry.dateTime)
        && QStringView(entry.uid).trimmed().isEmpty();
}

QString searchedName(SearchMode mode, const QString &rdsName)
{
    return mode == SearchMode::Pi ? QString() : rdsName;
}

Finding findingOf(int matches)
{
    if (matches == 1) {
        return Finding::Exact;
    }
    return matches > 1 ? Finding::Multi : Finding::None;
}

QString findingText(Finding finding)
{
    switch (finding) {
    case Finding::None:
        return u"None"_s;
    case Finding::Multi:
        return u"Multi"_s;
    case Finding::Exact:
        break;
    }
    return {};
}

QString markedField(const QString &fmlist, Finding finding)
{
    const QString value = findingText(finding).toLower();
    return value.isEmpty() ? fmlist : SetTagValue(fmlist, stateTag, value);
}

QByteArray updateLogLine(
    DateTime now, const QString &stage, const QStringList &columns, const CodePage &codePage)
{
    QString line = generalText(now) + u'\t' + stage + u'\t';
    for (qsizetype c = 0; c < columns.size(); ++c) {
        line += QString::number(c) + u':' + columns[c] + u'\t';
    }
    // A note of several lines is one record all the same.
    const QString record = foldedLineBreaks(line) + u"\r\n"_s;
    return codePage.encode(record);
}

QString updatedText(int updated)
{
    return u"Updated "_s + QString::number(updated) + u" entries"_s;
}

} // namespace quillon
