#pragma once

#include "platform/linux/BusConnection.h"
#include "platform/linux/Resident.h"

namespace kestrovan {

/// An object that lives on the thread of a bus.
template <class T>
using BusResident = Resident<BusConnection, T>;

} // namespace kestrovan
