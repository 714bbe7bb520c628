#pragma once

#include <QCache>
#include <QPixmap>
#include <QString>

#include <functional>
#include <initializer_list>

class QPainter;
class QRect;
class QStyleOption;
class QStyleOptionComboBox;
class QStyleOptionFrame;
class QStyleOptionSlider;

namespace quillon {

/// Pictures of controls, kept by everything that they are drawn by. A style's gradients and smoothed corners
/// cost more than a row of the grid, and every reception that comes asks for those of the whole form.
class KeptPictures
{
public:
    using Draw = std::function<void(QPainter &)>;

    /// Each draws the control by `draw`, or from the picture that was kept of one that looks the same: a
    /// scroll bar with its slider in the same place, a combo without its text, the panel of a text field,
    /// the frame below a group's title.
    void drawScrollBar(QPainter &painter, const QStyleOptionSlider &option, QRect slider, const Draw &draw);
    void drawCombo(QPainter &painter, const QStyleOptionComboBox &option, const Draw &draw);
    void drawFieldPanel(QPainter &painter, const QStyleOptionFrame &option, const Draw &draw);
    void drawGroupFrame(QPainter &painter, const QStyleOptionFrame &option, const Draw &draw);

private:
    using Pictures = QCache<QString, QPixmap>;

    static void drawKept(Pictures &pictures, QPainter &painter, const QStyleOption &option, QString key,
        std::initializer_list<int> parts, const Draw &draw);

    // Each has a limit in bytes of a screen of usual resolution. Scroll bars, one for each place of a slider,
    // push nothing else out.
    Pictures m_pictures {6'000'000};
    Pictures m_scrollBars {500'000};
};

} // namespace quillon
