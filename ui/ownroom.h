#pragma once

#include <QWidget>

namespace quillon {

/// A place in a window that its content fills. What the content shows anew never makes the window lay itself
/// out anew: that takes as long as painting half of it.
class OwnRoom : public QWidget
{
    Q_OBJECT

public:
    /// Takes the content in, and its place in the window's layout when it has one.
    explicit OwnRoom(QWidget &content);

    [[nodiscard]] QSize sizeHint() const override { return m_content.sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return m_content.minimumSizeHint(); }

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget &m_content;
};

} // namespace quillon
