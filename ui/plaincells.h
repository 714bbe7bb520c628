#pragma once

#include <QCache>
#include <QFont>
#include <QSizeF>
#include <QStaticText>
#include <QStyledItemDelegate>

namespace quillon {

/// Draws the cells of a table as the style does, but shapes a text only once: a row that comes or goes draws
/// hundreds of cells anew, nearly all of which were there before. The cell with the focus, one with a font of
/// its own, and texts that are long, of several lines, of rare signs or written from the right are the
/// style's own work. Of what else a model may say of a cell, colours and icons, it draws nothing.
class PlainCells : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit PlainCells(QObject *parent = nullptr);

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    struct Shaped
    {
        QStaticText text; ///< shortened to fit
        QSizeF size;
    };
    struct Key
    {
        QString text;
        int width = 0;

        bool operator==(const Key &) const = default;
        friend size_t qHash(const Key &key, size_t seed = 0) { return qHashMulti(seed, key.text, key.width); }
    };

    [[nodiscard]] Shaped shaped(const QStyleOptionViewItem &option, const Key &key) const;

    mutable QCache<Key, Shaped> m_shaped;
    mutable QFont m_font; ///< of all that is kept
};

} // namespace quillon
