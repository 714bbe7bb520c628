#include "app/commandline.h"
#include "app/otherprogram.h"
#include "backup/backups.h"
#include "core/ui/form1.h"
#include "live/receiversettings.h"
#include "platform/applicationdirectory.h"
#include "platform/folderlock.h"
#include "ui/guard.h"
#include "ui/looks.h"
#include "ui/version.h"

#include <QApplication>
#include <QDir>
#include <QIcon>

#include <optional>

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
    using namespace quillon;
    CommandLine commandLine;
    if (const auto exitCode = commandLine.answered(argc, argv)) {
        return *exitCode;
    }
    std::optional<DisplayGuard> displayGuard(std::in_place);
    QApplication application(argc, argv);
    displayGuard.reset();
    QApplication::setApplicationName(u"quillon"_s);
    QApplication::setApplicationVersion(versionNumber());
    QApplication::setDesktopFileName(u"quillon"_s);
    QApplication::setWindowIcon(programIcon());
    installLooks();

    const QString chosen = commandLine.directory(QApplication::arguments());
    const QString directory = applicationDirectory(directoryChoiceOfProcess(chosen));
    const QString supplied = suppliedDirectory();
    const Regional regional = Regional::fromEnvironment();
    if (!guarded(nullptr, [&] { prepareApplicationDirectory(directory, supplied, regional.codePage); })) {
        return 1;
    }
    const FolderLock lock(directory);
    if (lock.isTaken()) {
        tellFolderInUse(directory);
        return 0;
    }
    const FrontDoor door(directory);
    const QString settings = commandLine.settings();
    Form1 form({directory, supplied, regional, &FileCalls::real(),
        settings.isEmpty() ? receiverFolder() : QDir(settings).absolutePath(), backupRoot()});
    form.Form_Load();
    form.show();
    QObject::connect(&door, &FrontDoor::wanted, &form, [&form] {
        form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
        form.show();
        form.raise();
        form.activateWindow();
    });
    return QApplication::exec();
}
