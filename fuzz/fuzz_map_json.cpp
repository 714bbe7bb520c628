// A list of an FM map service of any bytes: what is kept is a stations.lst, and what is refused says why.
// What Qt takes for JSON we take, too, but for what is none by RFC 8259.

#include "require.h"

#include "platform/runtimeerror.h"
#include "stations/jsontokens.h"
#include "stations/mapjson.h"
#include "stations/stationlist.h"

#include <QBuffer>
#include <QJsonDocument>

#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

bool isJson(const QByteArray &text)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.json"_s, {});
    try {
        JsonTokens tokens(source);
        for (JsonToken token = tokens.next(); token != JsonToken::End; token = tokens.next()) {
            require(tokens.text().size() <= JsonTokens::longestText);
        }
        return true;
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Reading list.json, line "));
        return false;
    }
}

// Qt lets a number end with its point, control characters stand in quotes, any letter follow a backslash, and
// brackets nest deeper.
bool isLaxer(const QByteArray &text)
{
    const QByteArrayView escapes = "\"\\/bfnrtu";
    bool lax = text.contains('.') || text.count('{') + text.count('[') > 60;
    bool escaped = false;
    for (const char c : text) {
        lax = lax || static_cast<uchar>(c) < ' ' || (escaped && !escapes.contains(c));
        escaped = c == '\\' && !escaped;
    }
    return lax;
}

void read(const QByteArray &text)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.json"_s, {});
    StationCollector stations;
    try {
        readMapJson(source, stations);
    } catch (const RuntimeError &error) {
        require(error.doing().startsWith(u"Reading list.json"));
    }
    for (const RefusedLine &line : stations.refused()) {
        require(line.line > 0 && !line.reason.isEmpty() && line.reason.size() < 1'000);
    }
    const QByteArray file = stations.file();
    const StationList list(file, u"stations.lst"_s);
    require(list.leftOut() == 0);
    require(list.count() == file.count('\n') - 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    read(text);
    QJsonParseError error {};
    (void)QJsonDocument::fromJson(text, &error);
    const bool ours = isJson(text);
    require(ours || error.error != QJsonParseError::NoError || isLaxer(text));
    return 0;
}
