#include "ui/windowmemory.h"

#include "ui/onscreen.h"

#include <QChildEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStandardPaths>
#include <QStyle>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The layout of the file. What another one holds is not understood.
constexpr int version = 1;
constexpr qint64 mostBytes = 1 << 20;
constexpr qsizetype mostNumbers = 1000;
constexpr qsizetype mostDockBytes = 1 << 16;
constexpr QStringView docksKey = u"docks";

std::unique_ptr<QSettings> settingsOf(const QString &file)
{
    const QFileInfo info(file);
    if (info.exists() && (!info.isFile() || info.size() > mostBytes)) {
        return nullptr;
    }
    auto settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
    if (settings->value(u"version"_s).toInt() != version) {
        settings->clear();
    }
    return settings;
}

QString keyOf(const QWidget &window, const QString &what)
{
    return u"windows/"_s + window.objectName() + u'/' + what;
}

QString keyOf(const QSplitter &splitter)
{
    return keyOf(*splitter.window(), splitter.objectName());
}

QList<QSplitter *> splittersOf(const QWidget &window)
{
    QList<QSplitter *> splitters = window.findChildren<QSplitter *>();
    erase_if(splitters, [&](const QSplitter *splitter) {
        return splitter->objectName().isEmpty() || splitter->window() != &window;
    });
    return splitters;
}

// A window of the program, none of the toolkit's boxes.
bool isOwnWindow(const QWidget &widget)
{
    const bool window = widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog;
    return window && !widget.objectName().isEmpty() && !qobject_cast<const QMessageBox *>(&widget)
        && !qobject_cast<const QInputDialog *>(&widget) && !qobject_cast<const QFileDialog *>(&widget);
}

// Where a window with its frame stands while it is not maximized: left, top, and the size without the frame.
QList<int> placeOf(const QWidget &window)
{
    const bool large = (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
    const QRect normal = large ? window.normalGeometry() : QRect(window.pos(), window.size());
    return {normal.x(), normal.y(), normal.width(), normal.height()};
}

void putIntoPlace(QWidget &window, const QList<int> &place)
{
    constexpr int farthest = 1000000;
    const bool sound = place.size() == 4 && place[2] > 0 && place[3] > 0
        && std::ranges::all_of(place, [](int number) { return qAbs(qint64(number)) <= farthest; });
    if (!sound) {
        return;
    }
    // How large its frame is, nobody knows before it is shown.
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const int edge = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    QList<QRect> screens;
    const QList<QScreen *> all = QGuiApplication::screens();
    for (const QScreen *screen : all) {
        screens += screen->availableGeometry().adjusted(0, 0, -2 * edge, -title - edge);
    }
    const QRect placed = onScreen({place[0], place[1], place[2], place[3]}, screens);
    window.resize(placed.size());
    window.move(placed.topLeft());
}

} // namespace

QString WindowMemory::standardFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/quillon/windows.ini"_s;
}

WindowMemory::WindowMemory(const QString &file, QObject *parent)
    : QObject(parent)
    , m_settings(settingsOf(file))
{
}

WindowMemory::~WindowMemory() = default;

void WindowMemory::keep(QWidget &window)
{
    if (!m_windows.contains(&window)) {
        m_windows.insert(&window, std::nullopt);
        connect(&window, &QObject::destroyed, this, [this](QObject *gone) { m_windows.remove(gone); });
        keepChildrenOf(window);
    }
}

void WindowMemory::keepDocks(QMainWindow &main)
{
    m_main = &main;
    m_firstDocks = main.saveState();
}

void WindowMemory::restoreDocks()
{
    const QByteArray kept = remembered(docksKey.toString()).toByteArray();
    if (!kept.isEmpty() && kept.size() <= mostDockBytes) {
        m_main->restoreState(kept);
    }
}

void WindowMemory::keepChildrenOf(QWidget &main)
{
    main.installEventFilter(this);
    const QList<QWidget *> children = main.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        child->installEventFilter(this);
    }
}

bool WindowMemory::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::ChildAdded) {
        // What it is going to be, a window or not and of which name, is known when it is shown.
        QObject *child = static_cast<QChildEvent *>(event)->child();
        if (child->isWidgetType()) {
            child->installEventFilter(this);
        }
    } else if (event->type() == QEvent::Show && !event->spontaneous() && widget) {
        if (widget->parentWidget() && isOwnWindow(*widget)) {
            keep(*widget);
        }
        if (m_windows.contains(widget)) {
            restore(*widget);
        }
    } else if (event->type() == QEvent::Hide && !event->spontaneous() && m_windows.contains(watched)) {
        saveWindow(*widget);
    }
    return QObject::eventFilter(watched, event);
}

void WindowMemory::restore(QWidget &window)
{
    std::optional<FirstLook> &first = m_windows[&window];
    const bool isFirstTime = !first;
    const QList<QSplitter *> splitters = splittersOf(window);
    if (!first) {
        first = FirstLook {window.size(), {}};
        for (const QSplitter *splitter : splitters) {
            first->splitters.insert(splitter->objectName(), splitter->sizes());
        }
    }
    putIntoPlace(window, rememberedNumbers(keyOf(window, u"place"_s)));
    if (remembered(keyOf(window, u"maximized"_s)).toBool()) {
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
    // How much a dock has of a window depends on how large that is.
    if (isFirstTime && &window == m_main) {
        restoreDocks();
    }
    for (QSplitter *splitter : splitters) {
        const QList<int> sizes = rememberedNumbers(keyOf(*splitter));
        if (sizes.size() == splitter->count()
            && std::ranges::all_of(sizes, [](int size) { return size >= 0; })
            && std::ranges::any_of(sizes, [](int size) { return size > 0; })) {
            splitter->setSizes(sizes);
        }
    }
}

void WindowMemory::saveWindow(const QWidget &window)
{
    rememberNumbers(keyOf(window, u"place"_s), placeOf(window));
    remember(keyOf(window, u"maximized"_s), window.isMaximized());
    const QList<QSplitter *> splitters = splittersOf(window);
    for (const QSplitter *splitter : splitters) {
        rememberNumbers(keyOf(*splitter), splitter->sizes());
    }
    for (const KeptHeader &kept : m_headers) {
        if (kept.header->window() == &window) {
            saveHeader(kept);
        }
    }
    if (m_settings) {
        m_settings->sync();
    }
}

void WindowMemory::keep(QHeaderView &header, const QString &key)
{
    KeptHeader kept {&header, u"columns/"_s + key, lookOf(header), {}};
    const HeaderLook look {rememberedNumbers(kept.key + u"/order"_s),
        rememberedNumbers(kept.key + u"/widths"_s), rememberedNumbers(kept.key + u"/hidden"_s)};
    const HeaderLook &seen = applyLook(header, look) ? look : kept.first;
    for (int column = 0; column < seen.widths.size(); ++column) {
        kept.widths.insert(column, seen.widths[column]);
    }
    m_headers.push_back(kept);
    const auto found = [this, at = &header] { return std::ranges::find(m_headers, at, &KeptHeader::header); };
    connect(&header, &QHeaderView::sectionResized, this, [found](int column, int /*before*/, int width) {
        if (width > 0) {
            found()->widths.insert(column, width);
        }
    });
    connect(&header, &QObject::destroyed, this, [this, found] { m_headers.erase(found()); });
}

void WindowMemory::saveHeader(const KeptHeader &kept)
{
    HeaderLook look = lookOf(*kept.header);
    for (int column = 0; column < look.widths.size(); ++column) {
        if (look.hidden[column] != 0) {
            look.widths[column] = kept.widths.value(column);
        }
    }
    rememberNumbers(kept.key + u"/order"_s, look.order);
    rememberNumbers(kept.key + u"/widths"_s, look.widths);
    rememberNumbers(kept.key + u"/hidden"_s, look.hidden);
}

void WindowMemory::setSorting(const QString &key, const std::optional<KeptSorting> &sorting)
{
    rememberNumbers(u"sorting/"_s + key,
        sorting ? QList<int> {sorting->column, sorting->descending ? 1 : 0} : QList<int>());
}

std::optional<KeptSorting> WindowMemory::sorting(const QString &key, int columns) const
{
    const QList<int> numbers = rememberedNumbers(u"sorting/"_s + key);
    if (numbers.size() != 2 || numbers[0] < 0 || numbers[0] >= columns) {
        return std::nullopt;
    }
    return KeptSorting {numbers[0], numbers[1] != 0};
}

void WindowMemory::setTicked(const QString &key, bool ticked)
{
    remember(u"ticks/"_s + key, ticked);
}

bool WindowMemory::isTicked(const QString &key) const
{
    return remembered(u"ticks/"_s + key).toBool();
}

void WindowMemory::forget()
{
    if (m_settings) {
        m_settings->clear();
        m_settings->sync();
    }
    if (m_main) {
        const QList<QDockWidget *> docks = m_main->findChildren<QDockWidget *>();
        for (QDockWidget *dock : docks) {
            dock->setFloating(false);
        }
        m_main->restoreState(m_firstDocks);
    }
    for (const KeptHeader &kept : m_headers) {
        applyLook(*kept.header, kept.first);
    }
    for (auto window = m_windows.cbegin(); window != m_windows.cend(); ++window) {
        if (const std::optional<FirstLook> &first = window.value()) {
            auto *widget = qobject_cast<QWidget *>(window.key());
            widget->setWindowState(widget->windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
            widget->resize(first->size);
            const QList<QSplitter *> splitters = splittersOf(*widget);
            for (QSplitter *splitter : splitters) {
                splitter->setSizes(first->splitters.value(splitter->objectName(), splitter->sizes()));
            }
        }
    }
}

void WindowMemory::save()
{
    for (auto window = m_windows.cbegin(); window != m_windows.cend(); ++window) {
        if (const auto *widget = qobject_cast<QWidget *>(window.key()); widget && widget->isVisible()) {
            saveWindow(*widget);
        }
    }
    if (m_main) {
        remember(docksKey.toString(), m_main->saveState());
    }
}

void WindowMemory::remember(const QString &key, const QVariant &value)
{
    if (m_settings) {
        m_settings->setValue(u"version"_s, version);
        m_settings->setValue(key, value);
    }
}

QVariant WindowMemory::remembered(const QString &key) const
{
    return m_settings ? m_settings->value(key) : QVariant();
}

void WindowMemory::rememberNumbers(const QString &key, const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers) {
        texts += QString::number(number);
    }
    remember(key, texts);
}

// Nothing where one of them is no number.
QList<int> WindowMemory::rememberedNumbers(const QString &key) const
{
    const QStringList texts = remembered(key).toStringList();
    QList<int> numbers;
    for (const QString &text : texts) {
        bool isNumber = false;
        numbers += text.toInt(&isNumber);
        if (!isNumber || numbers.size() > mostNumbers) {
            return {};
        }
    }
    return numbers;
}

void closeOnEscape(QWidget &window)
{
    auto *escape = new QShortcut(Qt::Key_Escape, &window);
    escape->setObjectName(u"closeOnEscape"_s);
    QObject::connect(escape, &QShortcut::activated, &window, &QWidget::close);
}

void closeOnEscape(QDockWidget &dock)
{
    // Where it does not float, its window is the main one, in which Esc means other things.
    QObject::connect(&dock, &QDockWidget::topLevelChanged, &dock, [&dock](bool floats) {
        delete dock.findChild<QShortcut *>(u"closeOnEscape"_s, Qt::FindDirectChildrenOnly);
        if (floats) {
            closeOnEscape(static_cast<QWidget &>(dock));
        }
    });
}

} // namespace quillon
