#include "import/storable.h"

#include "core/fieldchecks.h"
#include "core/logfields.h"
#include "import/importlimits.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool isAscii(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
}

// The text as the code page has it; counts the letters that it has not.
QString storedText(const QString &text, const CodePage &codePage, int &lost)
{
    if (isAscii(text)) {
        return text;
    }
    if (codePage.decode(codePage.encode(text)) == text) {
        return text;
    }
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QString stored = codePage.decode(codePage.encode(composed));
    if (stored == composed) {
        return stored;
    }
    for (qsizetype i = 0; i < composed.size(); ++i) {
        const bool pair = composed[i].isHighSurrogate() && i + 1 < composed.size();
        const QStringView letter = QStringView(composed).sliced(i, pair ? 2 : 1);
        lost += codePage.decode(codePage.encode(letter)) != letter ? 1 : 0;
        i += pair ? 1 : 0;
    }
    return stored;
}

QString textRefusal(const LogColumn &field, const QString &text, bool own)
{
    if (text.contains(u'|')) {
        return u"%1 holds \"|\", which separates the fields of the log"_s.arg(field.caption);
    }
    if (text.contains("CRLF"_L1)) {
        return u"%1 holds the letters \"CRLF\", which become a line break in the log"_s.arg(field.caption);
    }
    if (field.field != LogField::Notes && (text.contains(u'\n') || text.contains(u'\r'))) {
        return u"%1 holds a line break"_s.arg(field.caption);
    }
    if (!own && text.size() > longestImportCell) {
        return u"%1 is longer than %2 characters"_s.arg(field.caption).arg(longestImportCell);
    }
    return {};
}

} // namespace

QString makeStorable(ImportRow &row, const CodePage &codePage, bool own)
{
    LogEntry &entry = row.entry;
    for (const LogColumn &field : logFields()) {
        if (field.text) {
            QString &text = entry.*field.text;
            text = storedText(text, codePage, row.lettersLost);
            if (QString refusal = textRefusal(field, text, own); !refusal.isEmpty()) {
                return refusal;
            }
        }
    }
    if (entry.piCode.compare(deletedPiCode, Qt::CaseInsensitive) == 0) {
        return u"The PI code \"delete\" marks a deleted reception"_s;
    }
    return own ? QString() : addRefusal(entry.freq, entry.piCode, entry.rdsName, entry.country);
}

QString importedRdsName(QStringView name)
{
    QString text = name.trimmed().first(std::min(name.trimmed().size(), rdsNameLength)).toString();
    text.replace(u' ', u'_');
    while (text.endsWith(u'_')) {
        text.chop(1);
    }
    return text;
}

} // namespace quillon
