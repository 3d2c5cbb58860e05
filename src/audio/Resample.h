#pragma once

#include <QString>

#include <vector>

/// Converts mono samples from one rate to another with libsamplerate's best sinc converter; the
/// same rate returns the samples as they are. False with `error` when the converter fails.
bool resampleMono(const std::vector<float> &in, int fromRate, int toRate, std::vector<float> &out,
                  QString &error);
