#pragma once

#include <QLabel>

#include <functional>

class QToolButton;

namespace quillon {

/// One line of text, as in a status bar: cut off with "..." where the window is narrower. The whole text is
/// the tooltip then. It never asks the window for more room.
class StatusText : public QLabel
{
    Q_OBJECT

public:
    explicit StatusText(QWidget *parent = nullptr);

    /// Shows a text with a link behind it, until another text is set; the link does `work`.
    void tell(const QString &text, const QString &link, std::function<void()> work);

    /// The link, `statusLink` unless it is given another name.
    [[nodiscard]] QToolButton &link() { return *m_link; }

    /// What stands in the window: the first line, as much of it as there is room for.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QString toldLine() const;
    void placeLink();

    QToolButton *m_link;
    QString m_linkedText; ///< the text that the link belongs to
    std::function<void()> m_work;
};

} // namespace quillon
