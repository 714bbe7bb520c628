// A list of an FM map service of any bytes: what is kept is a stations.lst, and what is refused says why.
// Where Qt takes the text for JSON, so do we, and the other way round.

#include "platform/runtimeerror.h"
#include "stations/jsontokens.h"
#include "stations/mapjson.h"
#include "stations/stationlist.h"

#include <QBuffer>
#include <QJsonDocument>

#include <cstdint>
#include <cstdlib>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

void require(bool good)
{
    if (!good) {
        std::abort();
    }
}

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
    // Qt reads objects and lists alone, and is stricter about UTF-8.
    QJsonParseError error {};
    (void)QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::NoError && !text.contains('\0')) {
        int depth = 0;
        int deepest = 0;
        for (const char c : text) {
            depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
            deepest = std::max(deepest, depth);
        }
        require(isJson(text) || deepest > 50 || text.contains('e') || text.contains('E') || text.size() > 64);
    } else {
        (void)isJson(text);
    }
    return 0;
}
