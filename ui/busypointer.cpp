#include "ui/busypointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace quillon {

BusyPointer::BusyPointer()
{
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

BusyPointer::~BusyPointer()
{
    QGuiApplication::restoreOverrideCursor();
}

NormalPointer::NormalPointer()
{
    QGuiApplication::setOverrideCursor(QCursor(Qt::ArrowCursor));
}

NormalPointer::~NormalPointer()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace quillon
