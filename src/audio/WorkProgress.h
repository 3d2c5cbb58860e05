#pragma once

#include <functional>

/// Told how far a long step of an import has come, from 0 to 1; returns false to stop the step,
/// which then fails as cancelled.
using WorkProgress = std::function<bool(double done)>;
