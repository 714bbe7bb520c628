#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace quillon {

/// What stands in the fields of the filter's bar; empty where all is shown.
struct FilterTexts
{
    QString text;
    QString mode;
    QString country;
    QString year;
    QString fmlist; ///< as the bar's list names it

    bool operator==(const FilterTexts &) const = default;
};

/// Filters that are kept under a name, by name whatever its case. They are in a file as far as it can be read
/// and written; what goes wrong there costs only the memory of the next run.
class KeptFilters
{
public:
    static constexpr std::size_t most = 200;
    static constexpr qsizetype longestText = 1000;
    static constexpr qsizetype longestName = 60;

    struct Kept
    {
        QString name;
        FilterTexts texts;

        bool operator==(const Kept &) const = default;
    };

    /// In memory alone.
    KeptFilters() = default;
    /// Those of the group "KeptFilters" of a settings file, which may be shared with other groups. Where
    /// there is no such file, those of `earlier`, where they once were, are taken over into it.
    explicit KeptFilters(const QString &path, const QString &earlier = {});

    /// In the order of their names.
    [[nodiscard]] const std::vector<Kept> &all() const { return m_kept; }
    [[nodiscard]] std::optional<FilterTexts> find(const QString &name) const;

    /// Keeps the texts, instead of what the name had. False when there is no more room.
    bool save(const QString &name, const FilterTexts &texts);
    void rename(const QString &from, const QString &to);
    void remove(const QString &name);

private:
    void read(const QString &path);
    void write() const;

    QString m_path;
    std::vector<Kept> m_kept;
};

} // namespace quillon
