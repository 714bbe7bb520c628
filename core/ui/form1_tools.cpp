#include "core/ui/form1.h"

#include "ui/frmsplash.h"

#include <QApplication>

namespace quillon {

// About.
void Form1::menuAbout_Click()
{
    (new frmSplash(this, frmSplash::Use::About, m_config.settings().propagationUrl))->show();
}

// Exit: every change was saved when it was made.
void Form1::MenuFileExit_Click()
{
    close();
}

} // namespace quillon
