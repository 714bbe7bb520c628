#include "import/importmemory.h"

#include "import/alreadythere.h"
#include "import/importlimits.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostBytes = 1 << 20;
constexpr int mostHeadings = 300;

QString keyOf(const QStringList &heading)
{
    const QByteArray bytes = heading.join(QChar(u'\x1F')).toUtf8();
    return u"headings/"_s
        + QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex());
}

std::unique_ptr<QSettings> settingsOf(const QString &file)
{
    const QFileInfo info(file);
    if (file.isEmpty() || (info.exists() && (!info.isFile() || info.size() > mostBytes))) {
        return nullptr;
    }
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

} // namespace

ImportMemory::ImportMemory(const QString &file)
    : m_settings(settingsOf(file))
{
}

std::optional<FormatChoice> ImportMemory::heading(const QStringList &heading) const
{
    const QStringList words =
        m_settings ? m_settings->value(keyOf(heading) + u"/columns"_s).toStringList() : QStringList();
    if (words.isEmpty() || words.size() > mostImportColumns) {
        return std::nullopt;
    }
    FormatChoice said;
    said.columns.emplace();
    for (const QString &word : words) {
        const auto use = columnUseOfKey(word);
        if (!use) {
            return std::nullopt;
        }
        said.columns->push_back(*use);
    }
    said.localTime = m_settings->value(keyOf(heading) + u"/local"_s).toBool();
    return said;
}

void ImportMemory::keepHeading(const QStringList &heading, const FormatChoice &said)
{
    if (!m_settings || !said.columns) {
        return;
    }
    m_settings->beginGroup(u"headings"_s);
    const bool full = m_settings->childGroups().size() >= mostHeadings;
    m_settings->endGroup();
    if (full) {
        m_settings->remove(u"headings"_s);
    }
    QStringList words;
    for (const ColumnUse use : *said.columns) {
        words += columnUseKey(use);
    }
    m_settings->setValue(keyOf(heading) + u"/columns"_s, words);
    m_settings->setValue(keyOf(heading) + u"/local"_s, said.localTime.value_or(false));
    m_settings->sync();
}

QTimeZone ImportMemory::zone() const
{
    const QTimeZone kept(m_settings ? m_settings->value(u"zone"_s).toByteArray() : QByteArray());
    const QTimeZone ofComputer = QTimeZone::systemTimeZone();
    return kept.isValid() ? kept : ofComputer.isValid() ? ofComputer : QTimeZone::utc();
}

void ImportMemory::keepZone(const QTimeZone &zone)
{
    if (m_settings) {
        m_settings->setValue(u"zone"_s, zone.id());
    }
}

int ImportMemory::minutes() const
{
    bool isNumber = false;
    const int kept = m_settings ? m_settings->value(u"minutes"_s).toInt(&isNumber) : 0;
    return isNumber ? std::clamp(kept, 0, mostImportMinutes) : usualImportMinutes;
}

void ImportMemory::keepMinutes(int minutes)
{
    if (m_settings) {
        m_settings->setValue(u"minutes"_s, minutes);
    }
}

} // namespace quillon
