#pragma once

#include "ui/elidedlabel.h"

#include <functional>

class QToolButton;

namespace quillon {

/// The text of a status bar, with what can be done about it.
class StatusText : public ElidedLabel
{
    Q_OBJECT

public:
    explicit StatusText(QWidget *parent = nullptr);

    /// Shows a text with a link behind it, until another text is set; the link does `work`.
    void tell(const QString &text, const QString &link, std::function<void()> work);

    /// The link, `statusLink` unless it is given another name.
    [[nodiscard]] QToolButton &link() { return *m_link; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    [[nodiscard]] int roomBehind() const override;

private:
    void placeLink();

    QToolButton *m_link;
    QString m_linkedText; ///< the text that the link belongs to
    std::function<void()> m_work;
};

} // namespace quillon
