#include "live/sources.h"

#include "live/address.h"
#include "live/rdsspysource.h"
#include "live/redseasource.h"
#include "live/rigctlsource.h"
#include "live/spyfilesource.h"
#include "live/srcpsource.h"
#include "live/webserversource.h"
#include "live/xdrdsource.h"

#include <QFileInfo>

#include <array>
#include <string_view>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct KindRow
{
    std::u16string_view name;
    std::u16string_view address;
};

constexpr std::array<KindRow, sourceKinds> kinds {{
    {u"gqrx", u"127.0.0.1:7356"},
    {u"rigctld", u"127.0.0.1:4532"},
    {u"SRCP", u"127.0.0.1:9030"},
    {u"xdrd", u"127.0.0.1:7373"},
    {u"RDS Spy", u"127.0.0.1:7376"},
    {u"FM-DX-Webserver", u"ws://127.0.0.1:8080/text"},
    {u"redsea", u"rtl_fm -M fm -l 0 -A std -f 98.5M -s 171k | redsea -r 171k"},
}};

const KindRow &row(SourceKind kind)
{
    return kinds[static_cast<std::size_t>(kind)];
}

QString text(std::u16string_view view)
{
    return QString::fromUtf16(view.data(), static_cast<qsizetype>(view.size()));
}

bool isFile(const QString &address)
{
    return address.endsWith(".spy"_L1, Qt::CaseInsensitive) || address.startsWith(u'/')
        || QFileInfo(address).isFile();
}

std::unique_ptr<ReceiverSource> makeOfHost(const SourceSettings &settings, const HostPort &address)
{
    switch (settings.kind) {
    case SourceKind::Gqrx:
    case SourceKind::Rigctld:
        return std::make_unique<RigctlSource>(address, nullptr);
    case SourceKind::Srcp:
        return std::make_unique<SrcpSource>(address);
    case SourceKind::Xdrd:
        return std::make_unique<XdrdSource>(address, settings.password);
    default:
        return std::make_unique<RdsSpySource>(address);
    }
}

} // namespace

QString kindName(SourceKind kind)
{
    return text(row(kind).name);
}

QString usualAddress(SourceKind kind)
{
    return text(row(kind).address);
}

bool takesPassword(SourceKind kind)
{
    return kind == SourceKind::Xdrd;
}

MadeSource makeSource(const SourceSettings &settings)
{
    const QString typed = settings.address.trimmed();
    if (settings.kind == SourceKind::Redsea) {
        if (typed.isEmpty()) {
            return {nullptr, u"a command is needed, for instance: %1"_s.arg(usualAddress(settings.kind))};
        }
        return {std::make_unique<RedseaSource>(typed), {}};
    }
    const QString address = typed.isEmpty() ? usualAddress(settings.kind) : typed;
    if (settings.kind == SourceKind::Webserver) {
        const auto url = webserverUrl(address);
        if (url && !url->userInfo().isEmpty()) {
            return {nullptr, u"an address with a name or a password in it (before the @) is not taken"_s};
        }
        return url ? MadeSource {std::make_unique<WebserverSource>(*url), {}}
                   : MadeSource {nullptr, u"\"%1\" is no address of a web receiver"_s.arg(address)};
    }
    if (settings.kind == SourceKind::RdsSpy && isFile(address)) {
        return {std::make_unique<SpyFileSource>(address, settings.atOnce), {}};
    }
    const auto usual = readHostPort(usualAddress(settings.kind), {});
    const auto host = readHostPort(address, *usual);
    if (!host) {
        return {nullptr, u"\"%1\" is no host and port"_s.arg(address)};
    }
    return {makeOfHost(settings, *host), {}};
}

} // namespace quillon
