#include "orders.h"
#include "user.h"
#include "watchedcalls.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillon::soak {

using namespace Qt::StringLiterals;

namespace {

// Lives in the program until that dies.
class Driver : public QObject
{
public:
    explicit Driver(const Orders &orders)
        : m_orders(orders)
        , m_teller([pipe = orders.pipe](const QByteArray &line) {
            // At most PIPE_BUF bytes: a kill does not cut it.
            ::syscall(SYS_write, pipe, line.constData(), line.size());
        })
        , m_calls(m_teller)
        , m_user(orders.root, m_teller, orders.first, orders.seed)
    {
        const QByteArray root = QFile::encodeName(orders.root);
        if (orders.seed % 2 == 1) {
            m_calls.refuseNameless();
        }
        watchCalls({root + "/log", root + "/state", root + "/out", root + "/look"}, m_calls);
        QCoreApplication::instance()->installEventFilter(this);
    }

    [[nodiscard]] Teller &teller() { return m_teller; }

    // The main window has come: the program has read its files.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == u"Form1") {
            QCoreApplication::instance()->removeEventFilter(this);
            auto *window = qobject_cast<QWidget *>(watched);
            QTimer::singleShot(0, window, [this, window] { work(*window); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    [[noreturn]] void work(QWidget &window)
    {
        // What the program starts is not driven.
        qunsetenv("LD_PRELOAD");
        qunsetenv(Orders::name);
        m_user.workWith(window);
        if (m_orders.call > 0) {
            m_calls.killAt(m_orders.call, static_cast<ToldCalls::Moment>(m_orders.moment));
        }
        for (;;) {
            m_user.runAny();
        }
    }

    Orders m_orders;
    Teller m_teller;
    WatchedCalls m_calls;
    User m_user;
};

// The command line is read by an application of its own, which is not the one with the window: the second one
// takes the place of the first.
std::unique_ptr<Driver> &driver()
{
    static std::unique_ptr<Driver> current;
    return current;
}

// What the window does not have is told before the program ends by it.
void tell(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtFatalMsg) {
        driver()->teller().failed(text.toUtf8());
    }
}

void drive()
{
    const QByteArray orders = qgetenv(Orders::name);
    if (!orders.isEmpty()) {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        driver().reset();
        driver() = std::make_unique<Driver>(Orders::read(orders));
        qInstallMessageHandler(tell);
    }
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(drive)

} // namespace quillon::soak
