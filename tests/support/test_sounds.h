#pragma once

#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "sound/samples/frame_reader.h"
#include "sound/samples/sound_error.h"

// Sounds that are computed when they are read, and a temporary folder to write into.

namespace tarnwick::sound {

class TestSound : public FrameReader {
  public:
    TestSound(AudioFormat format, std::int64_t frames) : format_(format), frames_(frames) {}
    AudioFormat format() const override { return format_; }
    std::int64_t frames() const override { return frames_; }
    void read(std::int64_t first, std::int64_t count, double* out) const override {
        for (std::int64_t i = 0; i < count * format_.channels; ++i)
            out[i] = value(first * format_.channels + i);
    }

  protected:
    virtual double value(std::int64_t index) const = 0;  // of the interleaved samples

  private:
    AudioFormat format_;
    std::int64_t frames_;
};

// Noise over the full range of the format.
class NoiseSound : public TestSound {
  public:
    using TestSound::TestSound;
    std::int64_t sample(std::int64_t index) const {
        auto mixed = static_cast<std::uint64_t>(index + 1) * 0x9E3779B97F4A7C15u;
        mixed ^= mixed >> 29;
        mixed *= 0xBF58476D1CE4E5B9u;
        return static_cast<std::int64_t>(mixed) >> (64 - format().bits);
    }

  protected:
    double value(std::int64_t index) const override {
        return std::ldexp(static_cast<double>(sample(index)), 1 - format().bits);
    }
};

class ListSound : public TestSound {
  public:
    ListSound(AudioFormat format, std::vector<double> values)
        : TestSound(format, static_cast<std::int64_t>(values.size()) / format.channels),
          values_(std::move(values)) {}

  protected:
    double value(std::int64_t index) const override { return values_.at(index); }

  private:
    std::vector<double> values_;
};

// A sine at half of full scale. The frequency rises by `rise` Hz from channel to channel.
class ToneSound : public TestSound {
  public:
    ToneSound(AudioFormat format, std::int64_t frames, double hertz, double rise = 0.0)
        : TestSound(format, frames), hertz_(hertz), rise_(rise) {}
    double valueAt(double seconds, int channel = 0) const {
        return 0.5 * std::sin(2.0 * std::numbers::pi * (hertz_ + channel * rise_) * seconds);
    }

  protected:
    double value(std::int64_t index) const override {
        const int channels = format().channels;
        return valueAt(static_cast<double>(index / channels) / format().rate,
                       static_cast<int>(index % channels));
    }

  private:
    double hertz_;
    double rise_;
};

// Reading fails from frame `broken` on.
class BrokenSound : public NoiseSound {
  public:
    BrokenSound(AudioFormat format, std::int64_t frames, std::int64_t broken)
        : NoiseSound(format, frames), broken_(broken) {}
    void read(std::int64_t first, std::int64_t count, double* out) const override {
        if (first + count > broken_) throw SoundError(SoundFailure::SourceChanged, "broken");
        NoiseSound::read(first, count, out);
    }

  private:
    std::int64_t broken_;
};

class TempFolder {
  public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "soundXXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~TempFolder() {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    const std::filesystem::path& path() const { return path_; }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

  private:
    std::filesystem::path path_;
};

// The bytes of a number as stored in a file.
inline std::string number(std::uint64_t value, int bytes, bool big = false) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += i < 8 ? static_cast<char>(value >> (8 * (big ? bytes - 1 - i : i))) : '\0';
    return text;
}

inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The samples in a file of raw doubles.
inline std::vector<double> doublesIn(const std::filesystem::path& file) {
    const std::string bytes = contentOf(file);
    std::vector<double> values(bytes.size() / sizeof(double));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof(double));
    return values;
}

// All samples of a stretch or of a whole sound, interleaved.
inline std::vector<double> samplesOf(const FrameReader& sound, std::int64_t first,
                                     std::int64_t end) {
    std::vector<double> values(static_cast<std::size_t>((end - first) * sound.format().channels));
    sound.read(first, end - first, values.data());
    return values;
}
inline std::vector<double> samplesOf(const FrameReader& sound) {
    return samplesOf(sound, 0, sound.frames());
}

// How `work` failed, if it did.
template <class Work>
std::optional<SoundFailure> failureOf(Work&& work) {
    try {
        work();
    } catch (const SoundError& error) {
        return error.failure();
    }
    return std::nullopt;
}

}  // namespace tarnwick::sound
