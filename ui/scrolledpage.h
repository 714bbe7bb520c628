#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace quillon {

/// All of a window but the last row of its layout, its buttons, made to scroll where the screen is too low
/// for it: the buttons stay in view. As high as what is in it, as long as the screen has the room.
class ScrolledPage : public QScrollArea
{
    Q_OBJECT

public:
    /// Takes the items of the window's layout over.
    explicit ScrolledPage(QVBoxLayout &windowLayout);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Makes the window as high as its page wants now, or as the screen allows.
    void fitWindow();

protected:
    void showEvent(QShowEvent *event) override;
};

} // namespace quillon
