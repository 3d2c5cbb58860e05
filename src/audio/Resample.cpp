#include "Resample.h"

#include <QCoreApplication>

#include <samplerate.h>

#include <cmath>

bool resampleMono(const std::vector<float> &in, int fromRate, int toRate, std::vector<float> &out,
                  QString &error, ResampleQuality quality)
{
    if (fromRate == toRate) {
        out = in;
        return true;
    }
    const double ratio = double(toRate) / double(fromRate);
    out.assign(size_t(std::ceil(double(in.size()) * ratio)) + 16, 0.0f);
    SRC_DATA data {};
    data.data_in = in.data();
    data.input_frames = long(in.size());
    data.data_out = out.data();
    data.output_frames = long(out.size());
    data.src_ratio = ratio;
    const int status = src_simple(
        &data, quality == ResampleQuality::Best ? SRC_SINC_BEST_QUALITY : SRC_SINC_MEDIUM_QUALITY, 1);
    if (status != 0) {
        error = QCoreApplication::translate("AudioImport", "the sample rate converter failed (%1).")
                    .arg(QString::fromUtf8(src_strerror(status)));
        return false;
    }
    out.resize(size_t(data.output_frames_gen));
    return true;
}
