#pragma once

#include "import/importformat.h"

#include <QSettings>
#include <QString>
#include <QTimeZone>

#include <memory>
#include <optional>

namespace quillon {

/// What the listener said of files and times once, kept from run to run in a file of settings; never needed.
/// A file that is broken, missing or cannot be written costs the memory and nothing else.
class ImportMemory
{
public:
    /// Nothing is kept without a file.
    explicit ImportMemory(const QString &file);

    /// What was said of a heading.
    [[nodiscard]] std::optional<FormatChoice> heading(const QStringList &heading) const;
    /// Keeps the columns and whether times are local, of a few hundred headings.
    void keepHeading(const QStringList &heading, const FormatChoice &said);

    /// The zone of local times; the computer's at first.
    [[nodiscard]] QTimeZone zone() const;
    void keepZone(const QTimeZone &zone);
    [[nodiscard]] int minutes() const;
    void keepMinutes(int minutes);

private:
    std::unique_ptr<QSettings> m_settings;
};

} // namespace quillon
