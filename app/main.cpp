#include "core/ui/form1.h"
#include "platform/applicationdirectory.h"
#include "ui/guard.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

namespace {

using namespace Qt::StringLiterals;

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 128}) {
        icon.addFile(u":/icons/quillon-%1.png"_s.arg(size));
    }
    return icon;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"quillon"_s);
    QApplication::setApplicationVersion(QStringLiteral(QUILLON_VERSION));
    QApplication::setDesktopFileName(u"quillon"_s);
    QApplication::setWindowIcon(programIcon());

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Logbook for long-distance reception of FM broadcast stations."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption directoryOption(
        u"directory"_s, u"Keep all files in this directory."_s, u"DIR"_s);
    parser.addOption(directoryOption);
    parser.process(application);

    using namespace quillon;
    const QString directory = applicationDirectory(directoryChoiceOfProcess(parser.value(directoryOption)));
    const QString supplied = suppliedDirectory();
    if (!guarded(nullptr, [&] { prepareApplicationDirectory(directory, supplied); })) {
        return 1;
    }
    Form1 form({directory, supplied, Regional::fromEnvironment()});
    form.Form_Load();
    form.show();
    return QApplication::exec();
}
