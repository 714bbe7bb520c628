#pragma once

namespace quillon {

/// The hourglass pointer, as long as it lives.
class BusyPointer
{
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

/// The normal pointer, as long as it lives: for a message while a busy pointer is set.
class NormalPointer
{
public:
    NormalPointer();
    ~NormalPointer();
    NormalPointer(const NormalPointer &) = delete;
    NormalPointer &operator=(const NormalPointer &) = delete;
};

} // namespace quillon
