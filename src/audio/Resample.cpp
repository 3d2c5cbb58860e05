#include "audio/Resample.h"

#include <QCoreApplication>

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

struct ConverterCloser
{
    void operator()(SRC_STATE *state) const { src_delete(state); }
};

// The converter's own texts ("SRC ratio outside [1/256, 256] range.") mean nothing to an operator;
// the rates are checked before, so what is left is a lack of memory or a fault of the converter.
QString converterFailed(int status)
{
    return QCoreApplication::translate("AudioImport", "the sample rate converter failed (fault %1).")
        .arg(status);
}

} // namespace

bool resampleMono(const std::vector<float> &in, int fromRate, int toRate, std::vector<float> &out,
                  QString &error, ResampleQuality quality, const WorkProgress &progress)
{
    if (fromRate == toRate) {
        out = in;
        return true;
    }
    int status = 0;
    std::unique_ptr<SRC_STATE, ConverterCloser> converter(src_new(
        quality == ResampleQuality::Best ? SRC_SINC_BEST_QUALITY : SRC_SINC_MEDIUM_QUALITY, 1, &status));
    if (!converter) {
        error = converterFailed(status);
        return false;
    }
    const double ratio = double(toRate) / double(fromRate);
    out.assign(size_t(std::ceil(double(in.size()) * ratio)) + 16, 0.0f);
    // A second of the recording at a time, so that a long one shows its progress and can stop.
    const size_t chunk = size_t(fromRate);
    size_t used = 0;
    size_t made = 0;
    for (;;) {
        SRC_DATA data {};
        data.data_in = in.data() + used;
        data.input_frames = long(std::min(chunk, in.size() - used));
        data.data_out = out.data() + made;
        data.output_frames = long(out.size() - made);
        data.src_ratio = ratio;
        data.end_of_input = used + size_t(data.input_frames) == in.size() ? 1 : 0;
        if ((status = src_process(converter.get(), &data)) != 0) {
            error = converterFailed(status);
            return false;
        }
        used += size_t(data.input_frames_used);
        made += size_t(data.output_frames_gen);
        // Once all is in, the converter gives out what it still holds until nothing is left.
        if (data.end_of_input && data.output_frames_gen == 0)
            break;
        if (progress && !progress(double(used) / double(in.size()))) {
            error = QCoreApplication::translate("AudioImport", "the import was cancelled.");
            return false;
        }
    }
    out.resize(made);
    return true;
}
