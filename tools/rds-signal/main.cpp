#include "live/grouplines.h"
#include "rds-signal/channel.h"
#include "rds-signal/groupmaker.h"
#include "rds-signal/modulator.h"
#include "rds-signal/stationlist.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

namespace {

int complain(const QString &what)
{
    std::fprintf(stderr, "rds-signal: %s\n", qPrintable(what));
    return 1;
}

struct Job
{
    std::vector<SignalStation> stations;
    ChannelSettings channel;
    double rate = 0;
    DateTime begin;
};

template<typename Sample>
void writeSamples(const std::vector<Sample> &samples, QIODevice &out)
{
    out.write(reinterpret_cast<const char *>(samples.data()),
        static_cast<qint64>(samples.size()) * qint64 {sizeof(Sample)});
}

void writeIq(const Job &job, QIODevice &out)
{
    for (const SignalStation &station : job.stations) {
        IqMaker maker(station, job.rate, job.channel);
        std::vector<std::complex<float>> samples(static_cast<std::size_t>(station.seconds * job.rate));
        std::ranges::generate(samples, [&] { return maker.next(); });
        writeSamples(samples, out);
    }
}

void writeMpx(const Job &job, QIODevice &out)
{
    for (const SignalStation &station : job.stations) {
        MpxMaker maker(station, job.rate);
        Channel channel(job.channel);
        std::vector<qint16> samples(static_cast<std::size_t>(station.seconds * job.rate));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const double left = channel.amplitude(static_cast<double>(i) / job.rate);
            const double value = std::clamp(left * maker.next() + channel.noise(), -1.0, 1.0);
            samples[i] = static_cast<qint16>(std::lround(value * 32'767));
        }
        writeSamples(samples, out);
    }
}

/// Calls `line(group, milliseconds)` for each group of all stations as it is received.
void eachGroup(const Job &job, const std::function<void(const RdsGroup &, qint64)> &line)
{
    Channel channel(job.channel);
    qint64 before = 0;
    for (const SignalStation &station : job.stations) {
        GroupMaker maker(station);
        while (static_cast<double>(maker.elapsed()) < station.seconds * 1000) {
            const RdsGroup group = maker.next();
            const qint64 when = before + maker.elapsed();
            line(channel.received(group, static_cast<double>(when) / 1000), when);
        }
        before += maker.elapsed();
    }
}

void writeHex(const Job &job, QIODevice &out)
{
    eachGroup(job, [&](const RdsGroup &group, qint64) { out.write(groupText(group) + '\n'); });
}

void writeSpy(const Job &job, QIODevice &out)
{
    out.write(
        "<recorder=\"rds-signal\" date=\"\" time=\"\" source=\"\" name=\"\" location=\"\" notes=\"\">\r\n");
    const MonthNames months;
    eachGroup(job, [&](const RdsGroup &group, qint64 when) {
        const DateTime moment {job.begin.seconds + when / 1000};
        const QString time = formatted(moment, u"yyyy/mm/dd hh:nn:ss", months);
        const QByteArray hundredths = QByteArray::number(when % 1000 / 10).rightJustified(2, '0');
        out.write(groupText(group, " ") + " @" + time.toLatin1() + '.' + hundredths + "\r\n");
    });
}

struct Form
{
    const char *name;
    double rate;
    void (*write)(const Job &, QIODevice &);
};

constexpr Form forms[] = {
    {"iq", 240'000, writeIq},
    {"mpx", 171'000, writeMpx},
    {"hex", 0, writeHex},
    {"spy", 0, writeSpy},
};

QString takeStations(const QCommandLineParser &options, Job &job)
{
    QStringList lines = options.values(u"station"_s);
    if (options.isSet(u"stations"_s)) {
        QFile file(options.value(u"stations"_s));
        if (!file.open(QIODevice::ReadOnly)) {
            return file.fileName() + u": "_s + file.errorString();
        }
        lines += QString::fromUtf8(file.readAll()).split(u'\n');
    }
    StationList list = readStations(lines);
    job.stations = std::move(list.stations);
    return list.wrong;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(u"Makes the signal of FM stations with RDS, one after the other."_s);
    options.addHelpOption();
    options.addOptions({
        {u"form"_s, u"iq (complex float32), mpx (16 bits), hex or spy (groups)."_s, u"form"_s, u"hex"_s},
        {u"station"_s, u"MHz;PI;PS;text;yyyy-mm-dd hh:nn;seconds;ECC; may be repeated."_s, u"line"_s},
        {u"stations"_s, u"A file of such lines, UTF-8."_s, u"file"_s},
        {u"rate"_s, u"Samples a second (iq 240000, mpx 171000)."_s, u"rate"_s},
        {u"noise"_s, u"Deviation of the noise, 0 to 1."_s, u"share"_s, u"0"_s},
        {u"fading"_s, u"Depth of the fading, 0 to 1."_s, u"share"_s, u"0"_s},
        {u"errors"_s, u"Share of turned bits of groups, 0 to 0.5."_s, u"share"_s, u"0"_s},
        {u"seed"_s, u"The same seed makes the same signal."_s, u"number"_s, u"1"_s},
        {u"begin"_s, u"Time of the first group of a spy file."_s, u"yyyy-mm-dd hh:nn"_s,
            u"2025-06-01 12:00"_s},
        {u"out"_s, u"The file; without it, standard output."_s, u"file"_s},
    });
    options.process(application);

    Job job;
    if (const QString wrong = takeStations(options, job); !wrong.isEmpty()) {
        return complain(wrong);
    }
    const auto share = [&](const QString &name) { return options.value(name).toDouble(); };
    job.channel = {
        share(u"noise"_s), share(u"fading"_s), 4, share(u"errors"_s), options.value(u"seed"_s).toUInt()};
    const auto begin = parseDateTime(options.value(u"begin"_s), MonthNames());
    if (!begin) {
        return complain(u"no time: "_s + options.value(u"begin"_s));
    }
    job.begin = *begin;

    const QByteArray name = options.value(u"form"_s).toLatin1();
    const auto *const form = std::ranges::find_if(forms, [&](const Form &one) { return name == one.name; });
    if (form == std::end(forms)) {
        return complain(u"no form: "_s + QString::fromLatin1(name));
    }
    job.rate = options.isSet(u"rate"_s) ? share(u"rate"_s) : form->rate;
    if (form->rate > 0 && job.rate < 125'000) {
        return complain(u"the rate has to be 125000 at least"_s);
    }

    QFile out(options.value(u"out"_s));
    const bool opened = options.isSet(u"out"_s) ? out.open(QIODevice::WriteOnly | QIODevice::Truncate)
                                                : out.open(stdout, QIODevice::WriteOnly);
    if (!opened) {
        return complain(out.fileName() + u": "_s + out.errorString());
    }
    form->write(job, out);
    if (!out.flush() || out.error() != QFileDevice::NoError) {
        return complain(out.fileName() + u": "_s + out.errorString());
    }
    return 0;
}
