#pragma once

#include <QLabel>

namespace quillon {

/// The text of a status bar: one line, cut off with "..." where the window is narrower. The whole text is the
/// tooltip then. It never asks the window for more room.
class StatusText : public QLabel
{
    Q_OBJECT

public:
    explicit StatusText(QWidget *parent = nullptr);

    /// What stands in the window: the first line, as much of it as there is room for.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quillon
