#pragma once

#include "core/ui/form1.h"
#include "user.h"

#include <memory>

namespace quillon::soak {

/// Lays out the folder of a case: `log` with an INI and a log of so many receptions, and beside it what the
/// commands need. The stand-in of the service will be on that port of loopback.
void layOut(const QString &root, int receptions, quint16 port);

/// A port of loopback on which nobody listens.
[[nodiscard]] quint16 freePort();

/// A user with a main window in this process.
class Session : public User
{
public:
    /// Receptions are numbered from `first` on; the same seed does the same.
    Session(const QString &root, FileCalls &calls, Teller &teller, int first, quint32 seed);

    /// Starts the window and tells what it found.
    void start();

    [[nodiscard]] Form1 &form() { return *m_form; }

private:
    FileCalls &m_calls;
    std::unique_ptr<Form1> m_form;
};

} // namespace quillon::soak
