#include "ui/keptfilters.h"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView group = u"KeptFilters";
// No file of kept filters is larger; a larger one is not read into memory.
constexpr qint64 largestFile = 4'194'304;

struct Part
{
    QStringView key;
    QString FilterTexts::*text;
};

constexpr std::array<Part, 5> parts {{
    {u"text", &FilterTexts::text},
    {u"mode", &FilterTexts::mode},
    {u"country", &FilterTexts::country},
    {u"year", &FilterTexts::year},
    {u"fmlist", &FilterTexts::fmlist},
}};

auto placeOf(auto &kept, const QString &name)
{
    return std::ranges::find_if(
        kept, [&](const KeptFilters::Kept &one) { return one.name.compare(name, Qt::CaseInsensitive) == 0; });
}

bool canBeRead(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.size() <= largestFile;
}

} // namespace

KeptFilters::KeptFilters(const QString &path, const QString &earlier)
    : m_path(path)
{
    if (QFileInfo::exists(path)) {
        read(path);
        return;
    }
    read(earlier);
    if (!m_kept.empty()) {
        write();
    }
}

void KeptFilters::read(const QString &path)
{
    if (!canBeRead(path)) {
        return;
    }
    QSettings file(path, QSettings::IniFormat);
    const int count = std::clamp(file.beginReadArray(group.toString()), 0, static_cast<int>(most));
    for (int i = 0; i < count; ++i) {
        file.setArrayIndex(i);
        const QString name = file.value(u"name"_s).toString().left(longestName).simplified();
        FilterTexts texts;
        for (const Part &part : parts) {
            texts.*part.text = file.value(part.key.toString()).toString().left(longestText);
        }
        if (!name.isEmpty() && !find(name)) {
            m_kept.push_back({name, texts});
        }
    }
    std::ranges::sort(m_kept, [](const Kept &one, const Kept &other) {
        return one.name.compare(other.name, Qt::CaseInsensitive) < 0;
    });
}

std::optional<FilterTexts> KeptFilters::find(const QString &name) const
{
    const auto found = placeOf(m_kept, name);
    return found == m_kept.end() ? std::nullopt : std::optional(found->texts);
}

bool KeptFilters::save(const QString &name, const FilterTexts &texts)
{
    const bool isNew = placeOf(m_kept, name) == m_kept.end();
    if (isNew && m_kept.size() >= most) {
        return false;
    }
    std::erase_if(m_kept, [&](const Kept &one) { return one.name.compare(name, Qt::CaseInsensitive) == 0; });
    const auto place = std::ranges::find_if(
        m_kept, [&](const Kept &one) { return one.name.compare(name, Qt::CaseInsensitive) > 0; });
    m_kept.insert(place, {name, texts});
    write();
    return true;
}

void KeptFilters::rename(const QString &from, const QString &to)
{
    if (const auto texts = find(from)) {
        std::erase_if(
            m_kept, [&](const Kept &one) { return one.name.compare(from, Qt::CaseInsensitive) == 0; });
        save(to, *texts);
    }
}

void KeptFilters::remove(const QString &name)
{
    if (const auto found = placeOf(m_kept, name); found != m_kept.end()) {
        m_kept.erase(found);
        write();
    }
}

void KeptFilters::write() const
{
    // A pipe or a device of that name would be waited for.
    if (m_path.isEmpty() || (QFileInfo::exists(m_path) && !canBeRead(m_path))) {
        return;
    }
    QSettings file(m_path, QSettings::IniFormat);
    file.remove(group.toString());
    file.beginWriteArray(group.toString(), static_cast<int>(m_kept.size()));
    int i = 0;
    for (const Kept &one : m_kept) {
        file.setArrayIndex(i++);
        file.setValue(u"name"_s, one.name);
        for (const Part &part : parts) {
            file.setValue(part.key.toString(), one.texts.*part.text);
        }
    }
    file.endArray();
    file.sync();
}

} // namespace quillon
