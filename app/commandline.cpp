#include "app/commandline.h"

#include "ui/version.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler usualHandler = nullptr;

// That the toolkit can do without one way to the screen says nothing to the user; that it has none is fatal.
void tellMissingDisplay(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtFatalMsg) {
        if (!QByteArrayView(context.category).startsWith("qt.qpa.")) {
            usualHandler(type, context, text);
        }
        return;
    }
    std::fputs("Quillon found no display to show its window on. Please start it from a desktop session, or "
               "set DISPLAY or WAYLAND_DISPLAY.\n",
        stderr);
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE);
}

// The options that the toolkit takes for itself, so that they are known before it runs.
QList<QCommandLineOption> toolkitOptions()
{
    QList<QCommandLineOption> options;
    for (const char *name :
        {"platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry", "geometry",
            "qwindowicon", "icon", "qwindowtitle", "title", "display", "session", "style", "stylesheet"}) {
        options += QCommandLineOption(QString::fromLatin1(name), {}, u"value"_s);
    }
    for (const char *name : {"reverse", "widgetcount", "nograb", "dograb", "sync"}) {
        options += QCommandLineOption(QString::fromLatin1(name));
    }
    for (QCommandLineOption &option : options) {
        option.setFlags(QCommandLineOption::HiddenFromHelp);
    }
    return options;
}

int refused(const QString &why)
{
    std::fputs(qPrintable(QString(u"quillon: "_s + why + u'\n')), stderr);
    return EXIT_FAILURE;
}

} // namespace

CommandLine::CommandLine()
    : m_help({u"h"_s, u"help"_s}, u"Show this help and exit."_s)
    , m_version({u"v"_s, u"version"_s}, u"Show the version and exit."_s)
    , m_directory(u"directory"_s,
          u"Keep all files in this directory. One that does not exist is created, with the supplied files in "
          "it."_s,
          u"DIR"_s)
    , m_settings(u"settings"_s,
          u"Keep the look of the windows and what is set about the receiver in this directory, in place of "
          u"the one of the desktop's settings."_s,
          u"DIR"_s)
{
    m_parser.setApplicationDescription(u"Logbook for long-distance reception of FM stations."_s);
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addOptions({m_directory, m_settings, m_help, m_version});
    m_parser.addOptions(toolkitOptions());
}

std::optional<int> CommandLine::answered(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments += QString::fromLocal8Bit(argv[i]);
    }
    const bool understood = m_parser.parse(arguments);
    if (m_parser.isSet(m_help)) {
        std::fputs(qPrintable(m_parser.helpText()), stdout);
        return EXIT_SUCCESS;
    }
    if (m_parser.isSet(m_version)) {
        std::puts(qPrintable(u"quillon "_s + versionNumber()));
        return EXIT_SUCCESS;
    }
    if (!understood) {
        return refused(m_parser.errorText());
    }
    const QStringList surplus = m_parser.positionalArguments();
    if (!surplus.isEmpty()) {
        return refused(u"unexpected argument \""_s + surplus.first()
            + u"\". To keep all files in a directory, say --directory DIR."_s);
    }
    return std::nullopt;
}

QString CommandLine::directory(const QStringList &arguments)
{
    m_parser.process(arguments);
    return m_parser.value(m_directory);
}

DisplayGuard::DisplayGuard()
{
    usualHandler = qInstallMessageHandler(tellMissingDisplay);
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(usualHandler);
}

} // namespace quillon
