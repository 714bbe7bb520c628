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
    return std::exchange(m_opened, {});
}

void Opened::open(const QUrl &url)
{
    m_opened += url.isLocalFile() ? url.toLocalFile() : url.toString();
}

} // namespace quillon::test
