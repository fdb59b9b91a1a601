#include "ndd/dump_file.h"

#include <fcntl.h>

#include <cerrno>

#include "camtune/platform/fs.h"

namespace NSCam {
namespace TuningUtils {

namespace fs = camtune::fs;

DumpFileResult writeDumpFile(const std::string& path, const DumpPiece* pieces, size_t count) {
    DumpFileResult result;
    for (size_t i = 0; i < count; ++i) result.total += pieces[i].size;
    fs::UniqueFd fd(fs::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!fd.isValid()) {
        result.status = DumpFileResult::OpenFailed;
        result.error = errno;
        return result;
    }
    for (size_t i = 0; i < count; ++i) {
        const auto* bytes = static_cast<const uint8_t*>(pieces[i].data);
        size_t left = pieces[i].size;
        while (left > 0) {
            ssize_t n = fs::write(fd.get(), bytes, left);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                result.status = DumpFileResult::WriteFailed;
                result.error = n < 0 ? errno : EIO;
                fd.reset();
                fs::unlink(path.c_str());
                return result;
            }
            bytes += n;
            left -= static_cast<size_t>(n);
            result.written += static_cast<size_t>(n);
        }
    }
    return result;
}

}  // namespace TuningUtils
}  // namespace NSCam
