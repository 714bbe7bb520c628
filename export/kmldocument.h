#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <functional>

namespace quillon {

/// The colour of a site that was heard: orange, as alpha, blue, green, red.
inline constexpr QByteArrayView heardColor = "ff00aaff";

/// A KML 2.1 document of sites that grows line by line, each ended by CR LF.
class KmlDocument
{
public:
    /// Appends a text in the encoding of the document.
    using Encode = std::function<void(QByteArray &bytes, QStringView text)>;

    KmlDocument(const QString &folder, Encode encode);

    void reserve(qsizetype size) { m_bytes.reserve(size); }

    void beginPlacemark(QStringView site, QStringView country);
    /// The receptions of the site: lines of an HTML list, as they stand.
    void beginList() { add("<description><![CDATA[ <ol>\r\n"); }
    void addToList(QByteArrayView line) { add(line); }
    void endList() { add("</ol>]]> </description>\r\n"); }
    void endPlacemark(QByteArrayView color, QStringView longitude, QStringView latitude);

    [[nodiscard]] QByteArray finished();

private:
    void add(QByteArrayView bytes) { m_bytes.append(bytes); }
    void addText(QStringView text) { m_encode(m_bytes, text); }

    Encode m_encode;
    QByteArray m_bytes;
};

} // namespace quillon
