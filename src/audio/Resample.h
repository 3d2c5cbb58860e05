#pragma once

#include "audio/WorkProgress.h"

#include <QString>

#include <vector>

/// libsamplerate's sinc converters: best keeps 97 % of the band, medium 90 % in a third of the
/// time.
enum class ResampleQuality { Best, Medium };

/// Converts mono samples from one rate to another; the same rate returns the samples as they are.
/// False with `error` when the converter fails or `progress` stops it.
bool resampleMono(const std::vector<float> &in, int fromRate, int toRate, std::vector<float> &out,
                  QString &error, ResampleQuality quality = ResampleQuality::Best,
                  const WorkProgress &progress = {});
