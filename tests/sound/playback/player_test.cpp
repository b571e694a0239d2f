#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <condition_variable>
#include <fstream>
#include <map>
#include <mutex>
#include <thread>

#include "sound/playback/audio_device.h"
#include "sound/playback/frame_ring.h"
#include "sound/playback/play_clock.h"
#include "sound/playback/player.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point then) {
    return std::chrono::duration<double, std::milli>(Clock::now() - then).count();
}

// Records what a player reports, and when.
class Witness {
  public:
    PlayerEvents events() {
        return {[this] { note("started"); }, [this] { note("ended"); },
                [this](SoundFailure failure) {
                    note(failure == SoundFailure::SourceChanged ? "changed" : "failed");
                },
                [this] { note("silent"); }};
    }
    bool await(const std::string& event, std::chrono::milliseconds patience = 8s) {
        std::unique_lock lock(mutex_);
        return heard_.wait_for(lock, patience, [&] { return at_.count(event) > 0; });
    }
    std::vector<std::string> all() {
        const std::lock_guard lock(mutex_);
        return all_;
    }
    Clock::time_point when(const std::string& event) {
        const std::lock_guard lock(mutex_);
        return at_.at(event);
    }
    double msBetween(const std::string& from, const std::string& to) {
        return std::chrono::duration<double, std::milli>(when(to) - when(from)).count();
    }

  private:
    void note(const std::string& event) {
        const std::lock_guard lock(mutex_);
        all_.push_back(event);
        at_[event] = Clock::now();
        heard_.notify_all();
    }
    std::mutex mutex_;
    std::condition_variable heard_;
    std::vector<std::string> all_;
    std::map<std::string, Clock::time_point> at_;
};

// Points the sound libraries to a folder without a server, unless the test starts one there.
class PlayerTest : public testing::Test {
  protected:
    PlayerTest() {
        set("XDG_RUNTIME_DIR", folder_.path().string());
        set("HOME", folder_.path().string());
        set("PULSE_SERVER", "unix:" + (folder_.path() / "pulse" / "native").string());
        set("ALSA_CONFIG_PATH", "/dev/null");
        set("JACK_NO_START_SERVER", "1");
    }
    ~PlayerTest() override {
        for (const pid_t child : children_)
            end(child);
        for (const auto& [name, value] : former_)
            value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }

    void set(const std::string& name, const std::string& value) {
        const char* old = getenv(name.c_str());
        former_[name] = old ? std::optional<std::string>(old) : std::nullopt;
        setenv(name.c_str(), value.c_str(), 1);
    }

    // Runs a program with its output in a file. Its exit code is 127 if it is not installed.
    pid_t run(std::vector<std::string> words, const std::filesystem::path& output) {
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            dup2(open(output.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0600), STDOUT_FILENO);
            dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
            execvp(arguments[0], arguments.data());
            _exit(127);
        }
        children_.push_back(child);
        return child;
    }

    void end(pid_t child) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }

    TempFolder folder_;
    std::map<std::string, std::optional<std::string>> former_;
    std::vector<pid_t> children_;
};

// A program that a sound server consists of, and the socket that shows that it is ready, if any.
struct ServerProgram {
    std::vector<std::string> words;
    std::string socket;
};

const std::vector<ServerProgram> kPulseAudio = {
    {{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
      "--load=module-null-sink norewinds=1", "--load=module-native-protocol-unix"},
     "pulse/native"}};

const std::vector<ServerProgram> kPipeWire = {
    {{"dbus-daemon", "--session", "--nofork", "--address=unix:runtime=yes"}, "bus"},
    {{"pipewire"}, "pipewire-0"},
    {{"wireplumber"}, ""},
    {{"pipewire-pulse"}, "pulse/native"}};

// A null sink of the same name and rate as the one of kPulseAudio.
constexpr const char* kPipeWireSink = R"(
context.properties = { default.clock.rate = 44100 }
context.objects = [ { factory = adapter args = {
    factory.name = support.null-audio-sink node.name = "null" media.class = Audio/Sink
    audio.position = [ MONO ] audio.rate = 44100 } } ]
)";

// Starts a separate sound server with a null sink, which plays in real time without output, and a
// recorder of what it plays. With rewinds the recorder would miss what the sink had queued before.
// The server is PulseAudio, or PipeWire if TARNWICK_TEST_SOUND is "pipewire".
class PulseTest : public PlayerTest {
  protected:
    void SetUp() override {
        const char* wanted = getenv("TARNWICK_TEST_SOUND");
        pipeWire_ = wanted && wanted == std::string("pipewire");
        if (pipeWire_) configurePipeWire();
        for (const ServerProgram& program : pipeWire_ ? kPipeWire : kPulseAudio) {
            server_ = run(program.words, "/dev/null");
            while (!std::filesystem::exists(folder_.path() / program.socket)) {
                int status = 0;
                if (waitpid(server_, &status, WNOHANG) == server_) {
                    children_.pop_back();
                    if (WEXITSTATUS(status) == 127)
                        GTEST_SKIP() << program.words[0] << " is not installed";
                    FAIL() << program.words[0] << " ended with " << status;
                }
                std::this_thread::sleep_for(5ms);
            }
        }
        recording_ = folder_.path() / "recording";
        run({"parec", "--raw", "-d", "null.monitor", "--latency-msec=10", "--rate=44100",
             "--channels=1", "--format=float32le"},
            recording_);
        while (!std::filesystem::exists(recording_) || std::filesystem::file_size(recording_) == 0)
            std::this_thread::sleep_for(5ms);
    }

    std::vector<float> heard() const {
        std::vector<float> samples(std::filesystem::file_size(recording_) / sizeof(float));
        std::ifstream in(recording_, std::ios::binary);
        in.read(reinterpret_cast<char*>(samples.data()),
                static_cast<std::streamsize>(samples.size() * sizeof(float)));
        return samples;
    }

    void configurePipeWire() {
        set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (folder_.path() / "bus").string());
        set("XDG_CONFIG_HOME", folder_.path().string());
        const std::filesystem::path drop = folder_.path() / "pipewire" / "pipewire.conf.d";
        std::filesystem::create_directories(drop);
        std::ofstream(drop / "sink.conf") << kPipeWireSink;
    }

    bool pipeWire_ = false;
    pid_t server_ = 0;  // the process that the player talks to
    std::filesystem::path recording_;
};

constexpr AudioFormat kMono{44100, 1, 24, false};

std::shared_ptr<const FrameReader> tone(int ms) {
    return std::make_shared<ToneSound>(kMono, 44100 * ms / 1000, 997.0);
}

TEST_F(PlayerTest, PlaysInRealTimeWithoutADevice) {
    Witness witness;
    Player player(witness.events());
    EXPECT_EQ(player.position(), 0);
    player.prepare();
    const auto asked = Clock::now();
    player.play(tone(1000), 4410, 4410 + 13230);
    EXPECT_TRUE(player.playing());
    EXPECT_LT(msSince(asked), 50.0);
    ASSERT_TRUE(witness.await("started"));
    while (player.playing()) {
        const double least = msSince(witness.when("started")) - 30.0;
        const double ms = static_cast<double>(player.position() - 4410) / 44.1;
        ASSERT_LE(ms, msSince(asked));
        ASSERT_GE(ms, std::min(least, 300.0));
        std::this_thread::sleep_for(7ms);
    }
    ASSERT_TRUE(witness.await("ended"));
    EXPECT_GE(witness.msBetween("started", "ended"), 295.0);
    EXPECT_LT(witness.msBetween("started", "ended"), 400.0);
    EXPECT_EQ(player.position(), 4410 + 13230);
    EXPECT_THAT(witness.all(), ElementsAre("started", "silent", "ended"));
    EXPECT_THROW(player.play(tone(10), 0, 442), SoundError);
    EXPECT_THROW(player.play(tone(10), 5, 4), SoundError);
    AudioDevice device;
    EXPECT_FALSE(device.open(44100, 1, 10, nullptr));
    EXPECT_EQ(device.played(), std::nullopt);
    EXPECT_TRUE(!device.start() && device.lost());
}

TEST_F(PlayerTest, PausingHoldsThePositionAndStoppingReportsNothing) {
    Witness witness;
    Player player(witness.events());
    player.pause();
    EXPECT_FALSE(player.paused());
    player.play(tone(300), 0, 13230);
    ASSERT_TRUE(witness.await("started"));
    std::this_thread::sleep_for(50ms);
    player.pause();
    const std::int64_t held = player.position();
    EXPECT_GT(held, 0);
    std::this_thread::sleep_for(350ms);
    EXPECT_TRUE(player.paused() && player.playing());
    EXPECT_EQ(player.position(), held);
    EXPECT_THAT(witness.all(), ElementsAre("started", "silent"));
    player.resume();
    ASSERT_TRUE(witness.await("ended"));
    EXPECT_EQ(player.position(), 13230);

    for (int i = 0; i < 50; ++i) {
        player.play(tone(20), 0, 882);
        if (i % 2 == 0) player.pause();
        if (i % 3 == 0) player.stop();
    }
    player.play(tone(300), 0, 13230);
    std::this_thread::sleep_for(50ms);
    player.stop();
    const std::size_t before = witness.all().size();
    const std::int64_t stopped = player.position();
    std::this_thread::sleep_for(60ms);
    EXPECT_EQ(witness.all().size(), before);
    EXPECT_EQ(player.position(), stopped);
    EXPECT_FALSE(player.playing());

    Witness brief;
    std::optional<Player> another(std::in_place, brief.events());
    another->play(tone(10), 7, 7);
    ASSERT_TRUE(brief.await("ended"));
    EXPECT_THAT(brief.all(), ElementsAre("started", "ended"));
    EXPECT_EQ(another->position(), 7);
    const auto left = Clock::now();
    another.reset();
    EXPECT_LT(msSince(left), 1500.0) << "its threads end at once";
}

TEST_F(PulseTest, TheStretchIsHeardCompletelyAndOnce) {
    Witness witness;
    Player player(witness.events());
    player.prepare();
    const auto sound = std::make_shared<ToneSound>(kMono, 44100, 997.0);
    const std::int64_t first = 10'000;
    const std::int64_t frames = 20'000;
    player.play(sound, first, first + frames);
    ASSERT_TRUE(witness.await("ended"));
    EXPECT_EQ(player.position(), first + frames);
    EXPECT_GE(witness.msBetween("started", "ended"), frames / 44.1 - 5.0);
    std::this_thread::sleep_for(100ms);
    const std::vector<float> samples = heard();
    const auto loud = [](float sample) { return sample != 0.0f; };
    const auto begin = std::find_if(samples.begin(), samples.end(), loud);
    const auto end = std::find_if(samples.rbegin(), samples.rend(), loud).base();
    ASSERT_EQ(end - begin, frames);
    double worst = 0.0;
    for (std::int64_t i = 0; i < frames; ++i) {
        const double expected = sound->valueAt(static_cast<double>(first + i) / 44100.0);
        worst = std::max(worst, std::fabs(begin[i] - expected));
    }
    EXPECT_LT(worst, 1.0e-4);  // the sink has 16 bits

    Witness brief;
    Player another(brief.events());
    another.prepare();
    another.play(sound, first, first + 1);
    ASSERT_TRUE(brief.await("ended"));
    std::this_thread::sleep_for(100ms);
    const std::vector<float> more = heard();
    EXPECT_EQ(std::count_if(more.begin(), more.end(), loud),
              std::count_if(samples.begin(), samples.end(), loud) + 1);
}

// Tests a server that goes away, and one that hangs, which must not block the player for long.
class LostServer : public PulseTest, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(LostServer, DoesNotStopTheClock) {
    const auto [signal, ms] = GetParam();
    Witness witness;
    const auto asked = Clock::now();
    {
        Player player(witness.events());
        player.play(tone(ms), 0, ms * 44'100 / 1000);
        ASSERT_TRUE(witness.await("started"));
        std::this_thread::sleep_for(150ms);
        kill(server_, signal);
        ASSERT_TRUE(witness.await("ended", 20s));
        EXPECT_GE(witness.msBetween("started", "ended"), ms - 5.0);
        EXPECT_THAT(witness.all(), ElementsAre("started", "silent", "ended"));
        // The next ones play in silence, the last without waiting for the server again.
        for (const double most : {20'000.0, 1500.0}) {
            const auto next = Clock::now();
            player.play(tone(30), 0, 1323);
            while (player.playing() && msSince(next) < most)
                std::this_thread::sleep_for(5ms);
            EXPECT_EQ(player.position(), 1323);
        }
    }
    EXPECT_LT(msSince(asked), 30'000.0);
}

INSTANTIATE_TEST_SUITE_P(Player, LostServer,
                         testing::Values(std::pair(SIGKILL, 500), std::pair(SIGSTOP, 2500)));

TEST_F(PulseTest, ReportsASoundThatCannotBeRead) {
    Witness witness;
    Player player(witness.events());
    player.play(std::make_shared<BrokenSound>(kMono, 300'000, 140'000), 0, 300'000);
    ASSERT_TRUE(witness.await("changed"));
    EXPECT_THAT(witness.all(), ElementsAre("started", "changed"));
    EXPECT_FALSE(player.playing());
}

TEST(FrameRing, HandsOverSamplesInOrderAcrossItsEnd) {
    const std::vector<float> in = {1, 2, 3, 4, 5, 6, 7, 8};
    std::vector<float> out(12, 0.0f);
    FrameRing ring(5);
    ring.write(in.data(), 4);
    EXPECT_EQ(ring.room(), 1u);
    EXPECT_EQ(ring.read(out.data(), 3), 3u);
    ring.write(in.data() + 4, 4);
    EXPECT_EQ(ring.room(), 0u);
    EXPECT_EQ(ring.read(out.data() + 3, 4), 4u);
    EXPECT_EQ(ring.read(out.data() + 7, 4), 1u);
    EXPECT_EQ(ring.read(out.data() + 8, 4), 0u);
    EXPECT_THAT(out, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 0, 0, 0, 0));
}

TEST(PlayClock, FollowsCoarseReportsSmoothly) {
    PlayClock clock(1000);
    PlayClock::Time time{};
    const auto after = [&](int ms) { return time += std::chrono::milliseconds(ms); };
    clock.limit(400);
    EXPECT_EQ(clock.position(after(50)), 0);  // not running yet
    clock.run(time);
    EXPECT_EQ(clock.position(after(30)), 30);
    clock.report(time, 38);  // a small difference: corrected by an eighth
    EXPECT_EQ(clock.position(time), 31);
    clock.report(time, 90);  // a large one: corrected at once
    EXPECT_EQ(clock.position(time), 90);
    clock.report(after(10), 60);  // never goes back
    EXPECT_EQ(clock.position(after(20)), 90);
    EXPECT_EQ(clock.position(after(20)), 100);
    clock.hold(time);
    EXPECT_EQ(clock.position(after(1000)), 100);
    clock.run(time);
    EXPECT_EQ(clock.position(after(1000)), 400);  // stops at the limit
    clock.limit(2000);
    EXPECT_EQ(clock.position(time), 1100);
}

}  // namespace
}  // namespace tarnwick::sound
