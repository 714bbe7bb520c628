#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "receiver-standin/receiverstandin.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

using namespace quillon::rdssignal;
using namespace Qt::StringLiterals;

// Walks through a list of stations as a tuner on loopback and prints its address, until it is ended.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(u"A stand-in for a tuner with xdrd, on loopback."_s);
    options.addHelpOption();
    options.addOptions({
        {u"port"_s, u"Listen on this port instead of a free one."_s, u"number"_s, u"0"_s},
        {u"stations"_s, u"Lines of MHz;PI;PS;text;yyyy-mm-dd hh:nn;seconds;ECC, UTF-8."_s, u"file"_s},
        {u"speed"_s, u"So many times as fast as on the air."_s, u"number"_s, u"1"_s},
        {u"seed"_s, u"The same seed makes the same fading."_s, u"number"_s, u"1"_s},
    });
    options.process(application);
    try {
        const QString text = QString::fromUtf8(quillon::readFile(options.value(u"stations"_s)));
        const StationList list = readStations(text.split(u'\n'));
        const double speed = options.value(u"speed"_s).toDouble();
        if (!list.wrong.isEmpty() || !(speed > 0)) {
            std::fprintf(stderr, "%s\n",
                list.wrong.isEmpty() ? "The speed has to be above 0" : qPrintable(list.wrong));
            return 1;
        }
        const ChannelSettings channel {0, 0.6, 9, 0.001, options.value(u"seed"_s).toUInt()};
        ReceiverStandIn standIn(list.stations, channel, speed, nullptr);
        if (!standIn.listen(options.value(u"port"_s).toUShort())) {
            std::fputs("The port cannot be listened on\n", stderr);
            return 1;
        }
        std::printf("127.0.0.1:%d\n", int {standIn.port()});
        std::fflush(stdout);
        return QCoreApplication::exec();
    } catch (const quillon::RuntimeError &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
