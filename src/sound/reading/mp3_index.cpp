#include "sound/reading/mp3_index.h"

#include <algorithm>

#include "sound/samples/byte_order.h"
#include "sound/samples/progress.h"

namespace tarnwick::sound {

Mp3Index::Mp3Index(const SourceFile& file, const Mp3Start& start, const std::stop_token& stop) {
    std::vector<std::uint8_t> window(256 * 1024);
    std::int64_t place = 0;  // byte offset of the window in the file
    std::int64_t held = 0;
    for (std::int64_t at = start.byte;;) {
        if (at + Mp3Header::kBytes > place + held) {
            checkStop(stop);
            place = at;
            held = static_cast<std::int64_t>(file.readSome(at, window));
            if (held < Mp3Header::kBytes) return;
        }
        const auto header = Mp3Header::read(big32(window.data() + (at - place)));
        if (header && header->shared == start.header.shared) {
            if (header->bytes > file.size() - at) return;  // truncated
            add(at, header->bytes);
            at += header->bytes;
        } else {
            const auto next = searchMp3Frames(file, at);
            if (!next || ++gaps_ > kMostGaps) return;
            const auto found = Mp3Header::at(file, *next);
            changesKind_ = found && found->shared != start.header.shared;
            if (changesKind_) return;
            at = std::max(*next, at + 1);
        }
    }
}

void Mp3Index::add(std::int64_t byte, int size) {
    end_ = byte + size;
    if (frames_ % step_ == 0) {
        if (bytes_.size() == kMostEntries) {
            step_ *= 2;
            for (std::size_t i = 0; i < kMostEntries / 2; ++i)
                bytes_[i] = bytes_[2 * i];
            bytes_.resize(kMostEntries / 2);
        }
        bytes_.push_back(byte);
    }
    ++frames_;
}

Mp3Index::Entry Mp3Index::before(std::int64_t frame) const {
    if (bytes_.empty()) return {};
    const std::int64_t place =
        std::clamp<std::int64_t>(frame / step_, 0, static_cast<std::int64_t>(bytes_.size()) - 1);
    return {place * step_, bytes_[static_cast<std::size_t>(place)]};
}

}  // namespace tarnwick::sound
