#pragma once

#include "support/opened.h"
#include "ui/looks.h"

#include <QApplication>

namespace quillon::bench {

/// The program as far as windows need it: offscreen, with its look, and what is handed to the desktop is
/// opened by nothing.
class Program
{
public:
    /// The arguments have to outlive it.
    Program(int &argc, char **argv)
        : m_application(argumentsOf(argc), argv)
    {
        QApplication::setQuitOnLastWindowClosed(false);
        installLooks();
    }

private:
    // Before there is an application.
    static int &argumentsOf(int &argc)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // The stand-in for the service is spoken to directly.
        qputenv("no_proxy", "*");
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        return argc;
    }

    QApplication m_application;
    test::Opened m_opened;
};

} // namespace quillon::bench
