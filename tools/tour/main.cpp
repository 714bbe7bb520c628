#include "backup/backups.h"
#include "core/config.h"
#include "core/ui/form1.h"
#include "platform/applicationdirectory.h"
#include "tour/look.h"
#include "tour/stops.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler usualHandler = nullptr;

// Off screen there is no window manager: what it cannot do there matters to nobody.
void tellOthers(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith("This plugin does not support"_L1)) {
        usualHandler(type, context, text);
    }
}

// Visits every stop, also after one that failed. The number of stops that failed.
int visitAll(quillon::tour::Walk &walk)
{
    using namespace quillon::tour;
    int failed = 0;
    for (const QList<Stop> &stops :
        {mainStops(), windowStops(), fmlistStops(), importStops(), receiverStops(), lastStops()}) {
        for (const Stop &stop : stops) {
            try {
                stop.visit(walk);
                std::printf("Seen: %s\n", qPrintable(stop.shows));
            } catch (const std::exception &error) {
                std::printf("Missed: %s (%s)\n", qPrintable(stop.shows), error.what());
                ++failed;
            }
        }
    }
    return failed;
}

} // namespace

// Walks a copy of the sample logbook through every window and writes a picture of each.
int main(int argc, char **argv)
{
    usualHandler = qInstallMessageHandler(tellOthers);
    const QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(u"Writes a picture of each window of Quillon."_s);
    options.addHelpOption();
    options.addOption({u"directory"_s, u"A copy of the sample logbook; it is changed."_s, u"DIR"_s});
    options.addOption({u"receiver"_s, u"Where the stand-in receiver is, host and port."_s, u"address"_s});
    options.addOption({u"pictures"_s, u"The pictures go here."_s, u"DIR"_s});
    options.process(application);
    const QString directory = options.value(u"directory"_s);
    const QString pictures = options.value(u"pictures"_s);
    if (directory.isEmpty() || !QDir().mkpath(pictures)) {
        std::fputs("Say both --directory and --pictures\n", stderr);
        return 1;
    }
    quillon::tour::setLook();
    quillon::Form1 form({QDir(directory).absolutePath(), quillon::suppliedDirectory(),
        quillon::Regional::fromEnvironment(), &quillon::FileCalls::real(), {}, quillon::backupRoot()});
    quillon::Config config(QDir(directory).absolutePath());
    config.readConfig();
    quillon::tour::makeBackups(config);
    form.Form_Load();
    form.show();
    quillon::tour::Walk walk(form, pictures, config.settings().fmlistUrl, options.value(u"receiver"_s));
    const int failed = visitAll(walk);
    std::printf("%lld pictures\n", static_cast<long long>(walk.written().size()));
    return failed == 0 ? 0 : 1;
}
