#pragma once

#include "platform/codepage.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace quillon {

/// A transmitter site. All fields are text, as they stand in tx.lst.
struct Transmitter
{
    QString name;
    QString country;
    QString latitude; ///< decimal degrees, north positive
    QString longitude; ///< decimal degrees, east positive
    QString distance; ///< from home, km or miles, or empty

    bool operator==(const Transmitter &) const = default;
};

/// What a row of the transmitter list was and becomes; without `before` it is appended, without `after` it is
/// taken away from the end.
struct SiteChange
{
    int row = -1;
    std::optional<Transmitter> before;
    std::optional<Transmitter> after;

    bool operator==(const SiteChange &) const = default;
};

/// Changes of the transmitter list, made one after the other.
struct SiteChanges : std::vector<SiteChange>
{
    /// What takes them back.
    [[nodiscard]] SiteChanges inverse() const;
};

/// The in-memory transmitter list, in the order in which the sites were first added. A site is known by name
/// and country, compared exactly.
class TransmitterList
{
public:
    /// The list has rows 0 to 5000.
    static constexpr int capacity = 5001;

    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    /// Throws "Subscript out of range" beyond the list.
    [[nodiscard]] const Transmitter &row(int index) const;

    /// Appends a site, or gives a known one these coordinates (it keeps its distance). Does nothing without a
    /// name, a country or any coordinate, and nothing for a new site when the list is full.
    /// Returns true when all of it is in the list now.
    bool add(const Transmitter &transmitter);
    /// What add would change; nothing when the list would stay as it is.
    [[nodiscard]] std::optional<SiteChange> addition(const Transmitter &transmitter) const;
    /// Makes the changes. Throws "Subscript out of range" for a row that there is not.
    void apply(const SiteChanges &changes);

    /// Number of the row of that name and country.
    [[nodiscard]] std::optional<int> find(QStringView name, QStringView country) const;

    /// The names of the sites of a country, in list order.
    [[nodiscard]] QStringList namesOfCountry(QStringView country) const;

    [[nodiscard]] auto begin() const { return m_rows.begin(); }
    [[nodiscard]] auto end() const { return m_rows.end(); }

private:
    /// Views of the texts of a row, which share their characters with every copy of the list and never
    /// change.
    struct Site
    {
        QStringView name;
        QStringView country;

        bool operator==(const Site &) const = default;
        // Few names stand in more than one country.
        friend std::size_t qHash(const Site &site, std::size_t seed) noexcept
        {
            return qHash(site.name, seed);
        }
    };

    void apply(const SiteChange &change);

    std::vector<Transmitter> m_rows;
    QHash<Site, int> m_index;
};

/// Adds the transmitters of a tx.lst. Throws "Subscript out of range" for a line with fewer than five pieces,
/// naming `fileName`, the line number and the line; the lines before it are in the list. Returns true when
/// every field of the file is in the list now, those of a site that stands twice in it included.
bool readTransmitters(
    TransmitterList &list, QByteArrayView file, const CodePage &codePage, const QString &fileName);

/// The content of a tx.lst: every field of every row followed by "|", lines ended by CR LF.
[[nodiscard]] QByteArray transmitterBytes(const TransmitterList &list, const CodePage &codePage);

} // namespace quillon
