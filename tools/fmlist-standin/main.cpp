#include "fmlist-standin/standin.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

// Serves a station list on loopback and prints the address, until it is ended.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(u"A stand-in for the FMList service on loopback."_s);
    options.addHelpOption();
    options.addOption({u"port"_s, u"Listen on this port instead of a free one."_s, u"number"_s, u"0"_s});
    options.addOption({u"stations"_s, u"The station list."_s, u"file"_s, QStringLiteral(QUILLON_STATIONS)});
    options.process(application);
    try {
        quillon::standin::StandIn standIn(quillon::readFile(options.value(u"stations"_s)));
        if (!standIn.listen(options.value(u"port"_s).toUShort())) {
            std::fputs("The port cannot be listened on\n", stderr);
            return 1;
        }
        std::printf("%s\n", qPrintable(standIn.url()));
        std::fflush(stdout);
        return QCoreApplication::exec();
    } catch (const quillon::RuntimeError &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
