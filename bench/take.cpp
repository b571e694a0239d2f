#include "take.h"

#include <unistd.h>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

namespace tarnwick::bench {

namespace {

constexpr int kRate = 44100;
constexpr int kHeaderBytes = 44;

// A file that is deleted when the program ends.
class Made {
  public:
    explicit Made(std::filesystem::path made) : path(std::move(made)) {}
    Made(const Made&) = delete;
    Made& operator=(const Made&) = delete;
    ~Made() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    const std::filesystem::path path;
};

std::filesystem::path placeFor(const char* name) {
    return std::filesystem::temp_directory_path() /
           ("tarnwick-bench-" + std::to_string(::getpid()) + name);
}

void put(std::ostream& file, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        file.put(static_cast<char>(value >> (8 * i)));
}

void putHeader(std::ostream& file, std::uint32_t dataBytes, int channels) {
    file << "RIFF";
    put(file, dataBytes + kHeaderBytes - 8, 4);
    file << "WAVEfmt ";
    put(file, 16, 4);
    put(file, 1, 2);
    put(file, static_cast<std::uint32_t>(channels), 2);
    put(file, kRate, 4);
    put(file, static_cast<std::uint32_t>(kRate * channels * 3), 4);
    put(file, static_cast<std::uint32_t>(channels * 3), 2);
    put(file, 24, 2);
    file << "data";
    put(file, dataBytes, 4);
}

// Smoothed noise as 24-bit samples; with `syllables` its level rises and falls five times a second.
std::string stretch(std::mt19937& random, double seconds, double level, bool syllables) {
    std::normal_distribution<double> noise(0.0, level);
    std::string bytes;
    double smooth = 0.0;
    const int frames = static_cast<int>(seconds * kRate);
    for (int i = 0; i < frames; ++i) {
        smooth += 0.3 * (noise(random) - smooth);
        const int place = i % (kRate / 5);
        const double swell =
            syllables ? 0.2 + std::min(place, kRate / 5 - place) * 10.0 / kRate : 1.0;
        const auto sample =
            static_cast<std::int32_t>(std::clamp(smooth * swell, -1.0, 0.999999) * 8388608.0);
        for (int byte = 0; byte < 3; ++byte)
            bytes += static_cast<char>(sample >> (8 * byte));
    }
    return bytes;
}

std::filesystem::path makeTake() {
    std::mt19937 random(1);
    std::vector<std::string> speech;
    for (int i = 0; i < 6; ++i)
        speech.push_back(stretch(random, 1.0 + 0.3 * i, 0.4, true));
    const std::string floor = stretch(random, 2.5, 0.002, false);
    constexpr std::uint32_t kBytes = 3600u * kRate * 3;

    const std::filesystem::path path = placeFor("-take.wav");
    std::ofstream file(path, std::ios::binary);
    putHeader(file, kBytes, 1);
    for (std::uint32_t left = kBytes; left > 0;) {
        std::string next = speech[random() % speech.size()] + speech[random() % speech.size()];
        next += floor.substr(0, 3 * static_cast<std::size_t>(kRate * 1.5 + random() % kRate));
        next.resize(std::min<std::size_t>(next.size(), left));
        file << next;
        left -= static_cast<std::uint32_t>(next.size());
    }
    if (!file.flush()) throw std::runtime_error("no room for an hour of sound");
    return path;
}

std::filesystem::path makeSixHours() {
    constexpr std::uint32_t kSeconds = 6 * 3600;
    constexpr std::uint32_t kSecond = kRate * 6;
    const std::filesystem::path path = placeFor("-six.wav");
    std::ofstream file(path, std::ios::binary);
    putHeader(file, 0xFFFFFFFF, 2);  // more than 4 GiB, so the file size counts
    std::mt19937 random(2);
    const std::string burst = stretch(random, 0.5, 0.4, true);
    for (std::uint32_t second = 0; second < kSeconds; second += 6) {
        file.seekp(kHeaderBytes + std::int64_t{second} * kSecond);
        file << burst;
    }
    file.close();
    std::filesystem::resize_file(path, kHeaderBytes + std::uintmax_t{kSeconds} * kSecond);
    return path;
}

}  // namespace

const std::filesystem::path& take() {
    if (const char* named = std::getenv("TARNWICK_BENCH_TAKE")) {
        static const std::filesystem::path path = named;
        return path;
    }
    static const Made made{makeTake()};
    return made.path;
}

const std::filesystem::path& sixHours() {
    static const Made made{makeSixHours()};
    return made.path;
}

const std::filesystem::path& outputFile() {
    static const Made made{placeFor("-out.wav")};
    return made.path;
}

}  // namespace tarnwick::bench
