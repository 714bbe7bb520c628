#include "fmlist-standin/behaviour.h"

#include <array>
#include <random>

namespace quillon::standin {

namespace {

struct NamedFault
{
    QByteArrayView name;
    Fault fault;
};

constexpr std::array faults {NamedFault {"none", Fault::None}, NamedFault {"drop", Fault::Drop},
    NamedFault {"500", Fault::Fail500}, NamedFault {"503", Fault::Fail503}, NamedFault {"junk", Fault::Junk},
    NamedFault {"huge", Fault::Huge}, NamedFault {"hang", Fault::Hang}, NamedFault {"noLF", Fault::NoLf},
    NamedFault {"eight", Fault::Eight}};

QByteArray junk()
{
    constexpr int size = 1'000'000;
    std::minstd_rand random;
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        byte = static_cast<char>(random() >> 8);
    }
    return bytes;
}

QByteArray withEightFields(const QByteArray &body)
{
    QByteArrayList lines = body.split('\n');
    for (QByteArray &line : lines) {
        line = line.left(line.lastIndexOf(';'));
    }
    return lines.join('\n');
}

} // namespace

bool Behaviour::strikes()
{
    if (fault == Fault::None || times == 0) {
        return false;
    }
    if (after > 0) {
        --after;
        return false;
    }
    if (times > 0) {
        --times;
    }
    return true;
}

std::optional<Behaviour> behaviourOf(const QByteArray &query)
{
    const Fields fields = formFields(query);
    const QByteArray mode = fieldValue(fields, "mode");
    const QByteArray times = fieldValue(fields, "times");
    Behaviour behaviour;
    behaviour.after = fieldValue(fields, "after").toInt();
    behaviour.times = times.isEmpty() ? -1 : times.toInt();
    if (mode.startsWith("delay:")) {
        behaviour.delay = mode.mid(6).toInt();
        return behaviour;
    }
    for (const NamedFault &named : faults) {
        if (named.name == mode) {
            behaviour.fault = named.fault;
            return behaviour;
        }
    }
    return std::nullopt;
}

QByteArray spoiled(const Answer &good, const Behaviour &behaviour)
{
    constexpr int tooMuch = 17 * 1024 * 1024;
    Answer answer = good;
    switch (behaviour.fault) {
    case Fault::None:
        break;
    case Fault::Drop:
        return wireBytes(answer).chopped(answer.body.size() / 2 + 1);
    case Fault::Fail500:
        answer = {"500 Internal Server Error", "text/html", "<h1>Internal Server Error</h1>\n"};
        break;
    case Fault::Fail503:
        answer = {"503 Service Unavailable", "text/html", "<h1>Come back later</h1>\n"};
        break;
    case Fault::Junk:
        answer.body = junk();
        break;
    case Fault::Huge:
        answer.body = QByteArray(tooMuch, 'x');
        break;
    case Fault::Hang:
        return {};
    case Fault::NoLf:
        answer.body.chop(answer.body.endsWith('\n') ? 1 : 0);
        break;
    case Fault::Eight:
        answer.body = withEightFields(answer.body);
        break;
    case Fault::Raw:
        return behaviour.raw;
    }
    return wireBytes(answer);
}

} // namespace quillon::standin
