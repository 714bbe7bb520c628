#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

class QWidget;

namespace quillon::test {

/// What a modal box showed when it was answered.
struct SeenDialog
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    std::optional<QString> input; ///< the text offered in an input box
};

/// Answers the modal message and input boxes of a test, in the order in which the answers were given. A box
/// without an answer is closed by Esc and noted all the same.
class DialogAnswers : public QObject
{
    Q_OBJECT

public:
    explicit DialogAnswers(QObject *parent = nullptr);

    /// Presses a button of a message box.
    void press(QMessageBox::StandardButton button);
    /// Types a text into an input box, over what it offers, and presses OK.
    void type(const QString &text);
    /// Presses OK in an input box as it stands.
    void accept();
    /// Closes a box by Esc.
    void cancel();
    /// Does something else while the box is open; it must close it.
    void doing(const std::function<void(QWidget *)> &work);

    [[nodiscard]] const QList<SeenDialog> &seen() const { return m_seen; }
    /// The texts of the boxes since the last call.
    [[nodiscard]] QStringList takeTexts();

private:
    void look();

    QTimer m_timer;
    QList<std::function<void(QWidget *)>> m_answers;
    QList<SeenDialog> m_seen;
    bool m_busy = false;
};

} // namespace quillon::test
