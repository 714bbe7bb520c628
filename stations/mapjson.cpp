#include "stations/mapjson.h"

#include "platform/runtimeerror.h"
#include "stations/jsontokens.h"

#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The most stations of one location, all of which wait for its name.
constexpr std::size_t mostOfLocation = 10'000;

struct Member
{
    QLatin1StringView name;
    QString StationTexts::*text;
};

constexpr std::array locationMembers {Member {"name"_L1, &StationTexts::site},
    Member {"itu"_L1, &StationTexts::country}, Member {"lat"_L1, &StationTexts::latitude},
    Member {"lon"_L1, &StationTexts::longitude}};

constexpr std::array stationMembers {Member {"freq"_L1, &StationTexts::frequency},
    Member {"pi"_L1, &StationTexts::pi}, Member {"pireg"_L1, &StationTexts::regionalPi},
    Member {"ps"_L1, &StationTexts::names}, Member {"station"_L1, &StationTexts::programme},
    Member {"regname"_L1, &StationTexts::region}, Member {"erp"_L1, &StationTexts::kilowatts},
    Member {"pol"_L1, &StationTexts::polarisation}, Member {"inactive"_L1, &StationTexts::inactive},
    Member {"id"_L1, &StationTexts::id}};

class Reader
{
public:
    Reader(BlockSource &source, StationCollector &stations)
        : m_tokens(source)
        , m_stations(stations)
    {
    }

    // False when there are no locations.
    bool read();

private:
    struct Waiting
    {
        StationTexts texts;
        qint64 line = 0;
    };

    // Calls `member` at each name of the object that has begun.
    void members(const std::function<void(const QString &)> &member);
    void location();
    void stations(std::vector<Waiting> &waiting);
    void station(std::vector<Waiting> &waiting);
    // The value that begins with `token`, if it is plain, into the field of that name.
    void take(JsonToken token, const QString &name, StationTexts &texts, const auto &fields);

    JsonTokens m_tokens;
    StationCollector &m_stations;
};

void Reader::members(const std::function<void(const QString &)> &member)
{
    while (m_tokens.next() == JsonToken::Name) {
        member(m_tokens.text());
    }
}

bool Reader::read()
{
    if (m_tokens.next() != JsonToken::ObjectBegin) {
        return false;
    }
    bool found = false;
    members([&](const QString &name) {
        const JsonToken token = m_tokens.next();
        if (name == "locations"_L1 && token == JsonToken::ObjectBegin) {
            found = true;
            members([this](const QString &) { location(); });
        } else {
            m_tokens.skip(token);
        }
    });
    (void)m_tokens.next(); // refuses what follows the end
    return found;
}

void Reader::location()
{
    const qint64 line = m_tokens.line();
    const JsonToken token = m_tokens.next();
    if (token != JsonToken::ObjectBegin) {
        m_tokens.skip(token);
        m_stations.refuse(line, u"a location is no object"_s);
        return;
    }
    StationTexts place;
    std::vector<Waiting> waiting;
    members([&](const QString &name) {
        const JsonToken value = m_tokens.next();
        if (name == "stations"_L1 && value == JsonToken::ArrayBegin) {
            stations(waiting);
        } else {
            take(value, name, place, locationMembers);
        }
    });
    for (Waiting &of : waiting) {
        for (const Member &member : locationMembers) {
            of.texts.*member.text = place.*member.text;
        }
        m_stations.add(of.texts, of.line);
    }
}

void Reader::stations(std::vector<Waiting> &waiting)
{
    for (JsonToken token = m_tokens.next(); token != JsonToken::ArrayEnd; token = m_tokens.next()) {
        if (token == JsonToken::ObjectBegin) {
            station(waiting);
        } else {
            m_stations.refuse(m_tokens.line(), u"a station is no object"_s);
            m_tokens.skip(token);
        }
    }
}

void Reader::station(std::vector<Waiting> &waiting)
{
    Waiting read {.texts = {}, .line = m_tokens.line()};
    members([&](const QString &name) { take(m_tokens.next(), name, read.texts, stationMembers); });
    if (waiting.size() < mostOfLocation) {
        waiting.push_back(std::move(read));
    } else {
        m_stations.refuse(read.line, u"the location has too many stations"_s);
    }
}

void Reader::take(JsonToken token, const QString &name, StationTexts &texts, const auto &fields)
{
    m_tokens.skip(token);
    const bool plain = token == JsonToken::String || token == JsonToken::Number || token == JsonToken::Word;
    for (const Member &member : fields) {
        if (plain && name == member.name) {
            const bool none = token == JsonToken::Word && m_tokens.text() == "null"_L1;
            texts.*member.text = none ? QString() : m_tokens.text();
        }
    }
}

} // namespace

void readMapJson(BlockSource &source, StationCollector &stations)
{
    if (!Reader(source, stations).read()) {
        throw RuntimeError(ErrorName::TypeMismatch,
            u"Reading %1: it is no list of an FM map service, it has no \"locations\""_s.arg(
                source.fileName()));
    }
}

} // namespace quillon
