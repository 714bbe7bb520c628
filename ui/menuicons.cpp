#include "ui/menuicons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

// The linker would leave the pictures out of a library otherwise.
static void initMenuIcons()
{
    Q_INIT_RESOURCE(menuicons);
}

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct MenuIcon
{
    QStringView entry; ///< its objectName, or that of a menu
    QStringView theme; ///< by the names that the desktops agreed on
    QStringView own;
};

constexpr MenuIcon menuIcons[] {
    {u"MenuFileExit", u"application-exit", u"exit"},
    {u"menuEditUndo", u"edit-undo", u"undo"},
    {u"menuEditRedo", u"edit-redo", u"redo"},
    {u"menuEditCopy", u"edit-copy", u"copy"},
    {u"menuEditMany", u"document-edit", u"edit"},
    {u"menuViewColumns", u"view-file-columns", u"columns"},
    {u"menuViewMap", u"mark-location", u"map"},
    {u"menuViewReceiver", u"network-wireless", u"receiver"},
    {u"menuViewReset", u"view-restore", u"reset"},
    {u"menuImportFile", u"document-import", u"import"},
    {u"menuImportRDSSpyLog", u"document-import", u"import"},
    {u"menuImportRDSDXLogCnv", u"document-import", u"import"},
    {u"menuExportGoogleTX", u"mark-location", u"place"},
    {u"menuExportGoogleLog", u"mark-location", u"place"},
    {u"menuExportWebPage", u"text-html", u"globe"},
    {u"menuExportEmail", u"mail-message-new", u"mail"},
    {u"menuFMListUploadLogs", u"document-send", u"upload"},
    {u"menuFMListAutoSearch", u"system-search", u"search"},
    {u"menuFMLSearchPI", u"system-search", u"search"},
    {u"menuFMLAutoUpdateViewLog", u"text-x-generic", u"page"},
    {u"menuFMLPropMap", u"applications-internet", u"globe"},
    {u"menuFMLYouProp", u"applications-internet", u"globe"},
    {u"menuFileBackups", u"document-open-recent", u"page"},
    {u"menuExportShown", u"document-export", u"export"},
    {u"menuImportStations", u"view-list-details", u"columns"},
    {u"menuStatsCollection", u"office-chart-bar", u"chart"},
    {u"menuStats", u"office-chart-bar", u"chart"},
    {u"menuToolsFind", u"edit-find", u"search"},
    {u"menuToolsFindAgain", u"go-next", u"again"},
    {u"menuToolsConverter", u"accessories-calculator", u"converter"},
    {u"menuSetup", u"preferences-system", u"setup"},
    {u"menuHelpOnlineHelp", u"help-contents", u"help"},
    {u"menuAbout", u"help-about", u"about"},
    // What comes to a menu later.
    {u"menuFile", u"text-x-generic", u"page"},
    {u"menuEdit", u"document-edit", u"edit"},
    {u"menuView", u"view-list-details", u"columns"},
    {u"menuImport", u"document-import", u"import"},
    {u"menuExport", u"document-export", u"export"},
    {u"menuFMList", u"applications-internet", u"globe"},
    {u"menuStatistics", u"office-chart-bar", u"chart"},
    {u"menuTools", u"accessories-calculator", u"converter"},
    {u"menuSetupBar", u"preferences-system", u"setup"},
    {u"menuHelp", u"help-contents", u"help"},
};

QIcon iconOf(const QString &name)
{
    const auto *const found = std::ranges::find(menuIcons, QStringView(name), &MenuIcon::entry);
    return found == std::end(menuIcons)
        ? QIcon()
        : QIcon::fromTheme(found->theme.toString(), ownIcon(found->own.toString()));
}

// Lines in black, for which the colour of the moment is put.
class LineIcon : public QIconEngine
{
public:
    explicit LineIcon(QByteArray lines)
        : m_lines(std::move(lines))
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Active || mode == QIcon::Selected ? QPalette::HighlightedText
                                                                           : QPalette::WindowText;
        QSvgRenderer renderer(
            QByteArray(m_lines).replace("#000000", palette.color(group, role).name().toLatin1()));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(painter, QRectF(rect));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new LineIcon(*this); }

private:
    QByteArray m_lines;
};

void giveIcons(const QMenu &menu)
{
    const QList<QAction *> entries = menu.actions();
    for (QAction *entry : entries) {
        const QMenu *below = entry->menu();
        if (entry->isSeparator() || !entry->icon().isNull()) {
            continue;
        }
        const QIcon own = iconOf(below ? below->objectName() : entry->objectName());
        // A column that is ticked has the tick in its place.
        if (!own.isNull() || !entry->isCheckable()) {
            entry->setIcon(own.isNull() ? iconOf(menu.objectName()) : own);
        }
        if (below) {
            giveIcons(*below);
        }
    }
}

} // namespace

void giveMenuIcons(const QMenuBar &bar)
{
    const QList<QAction *> menus = bar.actions();
    for (const QAction *menu : menus) {
        if (menu->menu()) {
            giveIcons(*menu->menu());
        }
    }
}

QIcon ownIcon(const QString &name)
{
    initMenuIcons();
    QFile file(u":/icons/menu/"_s + name + u".svg"_s);
    return file.open(QIODevice::ReadOnly) ? QIcon(new LineIcon(file.readAll())) : QIcon();
}

} // namespace quillon
