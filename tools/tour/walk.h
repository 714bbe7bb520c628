#pragma once

#include "support/dialogs.h"

#include <QStringList>
#include <QWidget>

#include <functional>

class QAction;

namespace quillon::tour {

/// The hands and the camera of the tour: works the main window's real controls and writes pictures.
class Walk
{
public:
    /// Pictures go into the directory `pictures`; `service` and `receiver` are the addresses of the
    /// stand-ins.
    Walk(QWidget &mainWindow, const QString &pictures, const QString &service, QString receiver);

    [[nodiscard]] QWidget &mainWindow() const { return m_mainWindow; }
    [[nodiscard]] const QString &receiver() const { return m_receiver; }
    [[nodiscard]] test::DialogAnswers &answers() { return m_answers; }
    [[nodiscard]] const QStringList &written() const { return m_written; }

    /// The control of that name in the window (the main window without one). Throws std::runtime_error when
    /// there is none; so do all others here that need one.
    template<typename Control = QWidget>
    [[nodiscard]] Control &control(const QString &name, QWidget *window = nullptr) const
    {
        auto *found = (window ? window : &m_mainWindow)->findChild<Control *>(name);
        return found ? *found : (fail(u"no control " + name), *found);
    }

    /// Clicks a control.
    void click(const QString &name, QWidget *window = nullptr) const;
    /// Types a text into a field, over what stands there.
    void type(const QString &name, const QString &text, QWidget *window = nullptr) const;
    /// Presses a key in the main window, after giving it the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// Opens the menu that the action stands in and clicks the action.
    void menu(const QString &action) const;
    /// The open window of that name.
    [[nodiscard]] QWidget &window(const QString &name) const;
    /// Clicks the row of the log grid with this Date/Time, after scrolling it to the top.
    void clickRow(const QString &dateTime) const;

    /// Lets the stand-in service take this long for each answer.
    void delayService(int milliseconds) const;
    /// Does something as soon as a condition holds, from within whatever event loop runs then.
    void when(const std::function<bool()> &holds, const std::function<void()> &work);

    /// Writes `name`.png and `name`-dark.png of a window, in this size when one is given.
    void picture(const QString &name, QWidget &of, QSize size = {});
    /// A picture of the main window.
    void picture(const QString &name);
    /// The next modal box is pictured, and answered by this key.
    void pictureOfBox(const QString &name, Qt::Key answer);

    [[noreturn]] static void fail(const QString &what);

private:
    QWidget &m_mainWindow;
    QString m_pictures;
    QString m_service;
    QString m_receiver;
    test::DialogAnswers m_answers;
    QStringList m_written;
};

} // namespace quillon::tour
