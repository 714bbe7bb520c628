#include "export/kmldocument.h"

#include <utility>

namespace quillon {

KmlDocument::KmlDocument(const QString &folder, Encode encode)
    : m_encode(std::move(encode))
{
    add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
        "<kml xmlns=\"http://earth.google.com/kml/2.1\">\r\n"
        "<Folder>\r\n"
        "<name>");
    addText(folder);
    add("</name>\r\n");
}

void KmlDocument::beginPlacemark(QStringView site, QStringView country)
{
    add("<Placemark><name>");
    addText(site);
    add(" (");
    addText(country);
    add(")</name>\r\n");
}

void KmlDocument::endPlacemark(QByteArrayView color, QStringView longitude, QStringView latitude)
{
    add("<Style><IconStyle><color>");
    add(color);
    add("</color></IconStyle></Style>\r\n"
        "<Point><extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode>\r\n"
        "<coordinates>");
    addText(longitude);
    add(",");
    addText(latitude);
    add(",200</coordinates>\r\n"
        "</Point></Placemark>\r\n");
}

QByteArray KmlDocument::finished()
{
    add("</Folder>\r\n"
        "</kml> \r\n");
    return std::move(m_bytes);
}

} // namespace quillon
