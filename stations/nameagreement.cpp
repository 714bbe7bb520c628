#include "stations/nameagreement.h"

#include <QList>

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr qsizetype longestName = 8;
using Letters = std::array<char16_t, longestName>;

constexpr bool isUnknown(QChar c)
{
    return c == u' ' || c == u'_' || c == u'?' || c == u'.';
}

// Eight letters in one case; 0 for what is not known, or beyond the end.
Letters lettersOf(QStringView text)
{
    Letters letters {};
    for (qsizetype i = 0; i < std::min(text.size(), longestName); ++i) {
        if (!isUnknown(text[i])) {
            letters[static_cast<std::size_t>(i)] = text[i].toCaseFolded().unicode();
        }
    }
    return letters;
}

QStringView withoutIndent(QStringView name)
{
    while (name.startsWith(u'_') || name.startsWith(u' ')) {
        name = name.sliced(1);
    }
    return name;
}

bool holdsPair(const Letters &name, char16_t first, char16_t second)
{
    for (std::size_t i = 0; i < name.size(); i += 2) {
        if (name[i] == first && name[i + 1] == second) {
            return true;
        }
    }
    return false;
}

NameAgreement agreement(const Letters &heard, const Letters &name)
{
    NameAgreement result;
    for (std::size_t i = 0; i < heard.size(); i += 2) {
        int known = 0;
        int equal = 0;
        for (std::size_t j = i; j < i + 2; ++j) {
            known += heard[j] != 0 ? 1 : 0;
            equal += heard[j] != 0 && heard[j] == name[j] ? 1 : 0;
        }
        result.known += known;
        result.equal += equal;
        if (equal < known && known == 2 && holdsPair(name, heard[i], heard[i + 1])) {
            result.equal -= equal;
            result.moved += 2;
        }
    }
    return result;
}

} // namespace

double NameAgreement::disagreement() const
{
    constexpr double ofMoved = 0.3;
    return known - equal - (1 - ofMoved) * moved;
}

NameAgreement nameAgreement(QStringView heard, QStringView names)
{
    const std::array heardAs {lettersOf(heard), lettersOf(withoutIndent(heard))};
    NameAgreement best {.known = 0, .equal = 0, .moved = 0};
    bool first = true;
    const auto consider = [&](QStringView name) {
        const Letters letters = lettersOf(name);
        const Letters indented = lettersOf(withoutIndent(name));
        for (const NameAgreement &one : {agreement(heardAs[0], letters), agreement(heardAs[1], letters),
                 agreement(heardAs[0], indented)}) {
            if (first || one.disagreement() < best.disagreement()) {
                best = one;
                first = false;
            }
        }
    };
    for (const QStringView name : names.split(u' ', Qt::SkipEmptyParts)) {
        consider(name);
    }
    if (first) {
        best = agreement(heardAs[0], {});
    }
    return best;
}

QString bestName(QStringView heard, QStringView names)
{
    QStringView best;
    double least = 0;
    for (const QStringView name : names.split(u' ', Qt::SkipEmptyParts)) {
        const double disagreement = nameAgreement(heard, name).disagreement();
        if (best.isEmpty() || disagreement < least) {
            best = name;
            least = disagreement;
        }
    }
    return best.toString().replace(u'_', u' ').trimmed();
}

} // namespace quillon
