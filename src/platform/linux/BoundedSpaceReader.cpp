#include "platform/linux/BoundedSpaceReader.h"

#include <QSet>

#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace {

/// The volumes whose statvfs is still running, shared with the threads that run them.
struct Waiting
{
    std::mutex mutex;
    QSet<QString> mountPoints;
};

} // namespace

LinuxDriveSource::SpaceReader boundedSpaceReader(std::chrono::milliseconds patience)
{
    return [waiting = std::make_shared<Waiting>(), patience](const QString &mountPoint) {
        {
            const std::lock_guard lock(waiting->mutex);
            if (waiting->mountPoints.contains(mountPoint))
                return std::optional<VolumeSpace>();
            waiting->mountPoints.insert(mountPoint);
        }
        auto answer = std::make_shared<std::promise<std::optional<VolumeSpace>>>();
        std::future<std::optional<VolumeSpace>> future = answer->get_future();
        // Detached: a volume that never answers keeps its thread, never the caller.
        std::thread([waiting, answer, mountPoint] {
            const std::optional<VolumeSpace> space = LinuxDriveSource::statvfsSpace(mountPoint);
            {
                const std::lock_guard lock(waiting->mutex);
                waiting->mountPoints.remove(mountPoint);
            }
            answer->set_value(space);
        }).detach();
        if (future.wait_for(patience) != std::future_status::ready)
            return std::optional<VolumeSpace>();
        return future.get();
    };
}
