#pragma once

#include "ui/headerlook.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class QDockWidget;
class QMainWindow;

namespace quillon {

/// By which column a table is sorted.
struct KeptSorting
{
    int column = 0;
    bool descending = false;

    bool operator==(const KeptSorting &) const = default;
};

/// Keeps the look of the windows from run to run in a file of settings, and never needs it: a file that is
/// broken, missing, no file at all or cannot be written costs the memory and nothing else. Windows, splitters
/// and tables are known by their objectName.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// $XDG_CONFIG_HOME/quillon/windows.ini
    [[nodiscard]] static QString standardFile();

    explicit WindowMemory(const QString &file = standardFile(), QObject *parent = nullptr);
    ~WindowMemory() override;

    /// From its next showing on the window opens with the size and place, and its splitters with the sizes,
    /// that they had when it was last hidden; never off the screen.
    void keep(QWidget &window);
    /// keep() for every window that `main` or a kept one opens as its child, except boxes that ask or choose
    /// a file.
    void keepChildrenOf(QWidget &main);
    /// Which docks of the window are open, where, floating or not, and how large, is as it was when save()
    /// was called last, from the window's first showing on. To be called once, before it, when they are as at
    /// first, which forget() brings back.
    void keepDocks(QMainWindow &main);
    /// The columns look as when their window was last hidden. To be called when they have their first look,
    /// which forget() brings back; once for each header.
    void keep(QHeaderView &header, const QString &key);

    void setSorting(const QString &key, const std::optional<KeptSorting> &sorting);
    /// Nothing where none is kept, and for a column that is not below `columns`.
    [[nodiscard]] std::optional<KeptSorting> sorting(const QString &key, int columns) const;

    /// A tick in a menu; off where none is kept.
    void setTicked(const QString &key, bool ticked);
    [[nodiscard]] bool isTicked(const QString &key) const;

    /// Forgets all, and what is open looks as it did at first; a window stays where it is.
    void forget();
    /// Writes what is open now; otherwise that happens when a window is hidden.
    void save();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct FirstLook
    {
        QSize size;
        QHash<QString, QList<int>> splitters;
    };
    struct KeptHeader
    {
        QHeaderView *header = nullptr;
        QString key;
        HeaderLook first;
        QHash<int, int> widths; ///< the last ones seen, of columns that are hidden now, too
    };

    void restore(QWidget &window);
    void restoreDocks();
    void saveWindow(const QWidget &window);
    void saveHeader(const KeptHeader &kept);
    void remember(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant remembered(const QString &key) const;
    void rememberNumbers(const QString &key, const QList<int> &numbers);
    [[nodiscard]] QList<int> rememberedNumbers(const QString &key) const;

    std::unique_ptr<QSettings> m_settings; ///< null where there can be none
    QHash<QObject *, std::optional<FirstLook>> m_windows; ///< a look from the first showing on
    std::vector<KeptHeader> m_headers;
    QPointer<QMainWindow> m_main;
    QByteArray m_firstDocks;
};

/// Esc closes the window, as its frame does. For every window but the main one.
void closeOnEscape(QWidget &window);
/// The same for a dock while it floats.
void closeOnEscape(QDockWidget &dock);

} // namespace quillon
