#include "core/fieldchecks.h"

#include "core/linebreaks.h"
#include "core/logentry.h"
#include "core/picode.h"
#include "platform/numbers.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString separatorProblem(FieldKind kind, QStringView text)
{
    if (!text.contains(u'|')) {
        return {};
    }
    switch (kind) {
    case FieldKind::HomeLatitude:
    case FieldKind::HomeLongitude:
    case FieldKind::Setting:
        return u"\"|\" stands for a comma in the settings and comes back as \",\""_s;
    default:
        return u"\"|\" separates the fields of the file: what follows would become the next field"_s;
    }
}

QString freqProblem(QStringView text)
{
    const auto freq = numeric(text);
    if (!freq) {
        return u"Frequency is not a number: 98.5 is one"_s;
    }
    return *freq < lowestFreq || *freq > highestFreq ? u"Frequency is outside 64 to 108 MHz"_s : QString();
}

QString piCodeProblem(QStringView text)
{
    if (text == deletedPiCode) {
        return u"PI code \"delete\" marks a deleted reception, which is never written to the file"_s;
    }
    return piCodeOf(text.trimmed()) ? QString() : u"PI code is not four hexadecimal digits"_s;
}

QString rdsNameProblem(QStringView text, const CodePage &codePage)
{
    return codePage.encode(text).size() > rdsNameLength ? u"RDS name is longer than 8 characters"_s
                                                        : QString();
}

QString degreesProblem(QStringView text, const QString &name, int most)
{
    const auto degrees = numeric(text);
    if (!degrees) {
        return name + u" is not a number: 51.34 is one"_s;
    }
    return std::abs(*degrees) > most ? u"%1 is outside -%2 to %2"_s.arg(name, QString::number(most))
                                     : QString();
}

QString notesProblem(QStringView text)
{
    const QString notes = text.toString();
    return unfoldedLineBreaks(notes) == notes ? QString() : u"\"CRLF\" becomes a line break in the file"_s;
}

QString valueProblem(FieldKind kind, QStringView text, const CodePage &codePage)
{
    switch (kind) {
    case FieldKind::Freq:
        return freqProblem(text);
    case FieldKind::PiCode:
        return piCodeProblem(text);
    case FieldKind::RdsName:
        return rdsNameProblem(text, codePage);
    case FieldKind::Latitude:
    case FieldKind::HomeLatitude:
        return degreesProblem(text, u"Latitude"_s, 90);
    case FieldKind::Longitude:
    case FieldKind::HomeLongitude:
        return degreesProblem(text, u"Longitude"_s, 180);
    case FieldKind::Notes:
        return notesProblem(text);
    case FieldKind::PlainText:
    case FieldKind::Setting:
        break;
    }
    return {};
}

// A character as it can be told: what shows nothing by its number, what is built of a crowd of marks
// shortened.
QString shown(QStringView character)
{
    constexpr qsizetype longest = 8;
    if (character.size() == 1 && !character.front().isPrint()) {
        return u"U+%1"_s.arg(uint(character.front().unicode()), 4, 16, QChar(u'0')).toUpper();
    }
    return character.size() > longest ? character.first(longest) + u"..."_s : character.toString();
}

bool isSameText(QStringView one, const QString &other)
{
    return one == other
        || one.toString().normalized(QString::NormalizationForm_C)
        == other.normalized(QString::NormalizationForm_C);
}

// "ł is stored as l, 😀 as ?": each character once, and only the first few.
QString codePageProblem(QStringView text, const CodePage &codePage)
{
    constexpr qsizetype most = 4;
    if (codePage.decode(codePage.encode(text)) == text) {
        return {};
    }
    QStringList changes;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    for (qsizetype begin = 0, end = finder.toNextBoundary(); end > begin;
         begin = end, end = finder.toNextBoundary()) {
        const QStringView character = text.sliced(begin, end - begin);
        const QString stored = codePage.decode(codePage.encode(character));
        if (isSameText(character, stored)) {
            continue;
        }
        const QString change = shown(character) + (changes.isEmpty() ? u" is stored as "_s : u" as "_s)
            + (stored.isEmpty() ? u"nothing"_s : shown(stored));
        if (std::ranges::any_of(
                changes, [&](const QString &told) { return told.startsWith(shown(character) + u' '); })) {
            continue;
        }
        if (changes.size() == most) {
            changes += u"..."_s;
            break;
        }
        changes += change;
    }
    return changes.join(u", "_s);
}

} // namespace

QString fieldProblem(FieldKind kind, QStringView text, const CodePage &codePage)
{
    if (text.isEmpty()) {
        return {};
    }
    if (QString problem = separatorProblem(kind, text); !problem.isEmpty()) {
        return problem;
    }
    if (QString problem = valueProblem(kind, text, codePage); !problem.isEmpty()) {
        return problem;
    }
    return codePageProblem(text, codePage);
}

QString addRefusal(QStringView freq, QStringView piCode, QStringView rdsName, QStringView country)
{
    if (freq.isEmpty()) {
        return u"Frequency Empty"_s;
    }
    if (piCode.isEmpty() && rdsName.isEmpty()) {
        return u"PI Code and RDS Name Empty"_s;
    }
    return country.isEmpty() ? u"Country Empty"_s : QString();
}

} // namespace quillon
