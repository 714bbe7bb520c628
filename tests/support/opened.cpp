#include "support/opened.h"

#include <QDesktopServices>

#include <array>
#include <utility>

namespace quillon::test {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array schemes {"file"_L1, "http"_L1, "https"_L1};

} // namespace

Opened::Opened()
{
    for (const auto scheme : schemes) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
}

Opened::~Opened()
{
    for (const auto scheme : schemes) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

QStringList Opened::take()
{
    QStringList opened;
    for (const QUrl &url : std::exchange(m_opened, {})) {
        opened += url.isLocalFile() ? url.toLocalFile() : url.toString();
    }
    return opened;
}

QStringList Opened::takeEncoded()
{
    QStringList opened;
    for (const QUrl &url : std::exchange(m_opened, {})) {
        opened += QString::fromLatin1(url.toEncoded());
    }
    return opened;
}

void Opened::open(const QUrl &url)
{
    m_opened += url;
}

} // namespace quillon::test
