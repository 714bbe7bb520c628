#pragma once

#include <QLabel>

namespace quillon {

/// One line of plain text, cut off with "..." where the label is narrower. The whole text is the tooltip
/// then. It never asks its window for more room.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /// What stands in the window: the first line, as much of it as there is room for.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    /// The first line, with a sign when there are more.
    [[nodiscard]] QString firstLine() const;
    /// What is kept free behind the text, in pixels.
    [[nodiscard]] virtual int roomBehind() const { return 0; }
};

} // namespace quillon
