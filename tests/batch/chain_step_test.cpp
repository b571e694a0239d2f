#include "batch/chain_step.h"

#include <gtest/gtest.h>

using namespace tarnwick::batch;

namespace {

// One letter for each step, in the order of ChainStep.
char letter(ChainStep step) { return "-sedthnx!+FR"[static_cast<int>(step)]; }

std::string told(ChainEvent event, const ChainMoment& moment) {
    const Following next = following(event, moment);
    return std::string{letter(next.step), '|'}.append(next.vsFilterStep.toStdString());
}

// Every combination of what the operator can ask for, with the steps of a file in their order as
// letters: start, end, detect, hiss, normalise, export.
struct Asked {
    ChainMoment moment;
    std::string steps;
};
std::vector<Asked> everythingAsked() {
    std::vector<Asked> all;
    for (int bits = 0; bits < 64; ++bits) {
        Asked asked;
        ChainMoment& m = asked.moment;
        bool* const flags[] = {&m.chCutEnd,      &m.cutsStart,    &m.cutsEnd,
                               &m.chSilenceEnds, &m.chHissFilter, &m.chNormalize};
        for (int i = 0; i < 6; ++i)
            *flags[i] = (bits >> i & 1) != 0;
        if (m.chCutEnd && m.cutsStart) asked.steps += 's';
        if (m.chCutEnd && (m.cutsEnd || !m.cutsStart)) asked.steps += 'e';
        if (m.chSilenceEnds) asked.steps += 'd';
        if (m.chHissFilter) asked.steps += 'h';
        if (m.chNormalize) asked.steps += 'n';
        all.push_back({m, asked.steps + 'x'});
    }
    return all;
}

TEST(ChainStep, StepsFollowOneAnotherInTheirOrder) {
    for (Asked& asked : everythingAsked()) {
        ChainMoment& m = asked.moment;
        const std::string& steps = asked.steps;
        const auto behind = [&](std::string_view done) {
            return steps[steps.find_first_not_of(done)];
        };
        // What a file before left behind does not count.
        m.nCommand = 19;
        m.vsFilterStep = kSetSilenceEnd.toString();
        const std::map<char, std::string> texts{
            {'s', "CutFileStart"}, {'e', "CutFileEnd"}, {'n', "All Filters Done"}};
        const auto text = texts.find(steps[0]);
        const std::string loaded = told(ChainEvent::SoundLoaded, m);
        EXPECT_EQ(loaded[0], steps[0]);
        EXPECT_EQ(loaded.substr(2), text == texts.end() ? "Set Silence End" : text->second);

        m.nCommand = 1;
        m.vsFilterStep = kCutFileStart.toString();
        const std::string cut = told(ChainEvent::EditEnded, m);
        if (m.cutsEnd)
            EXPECT_EQ(cut, "e|CutFileEnd");
        else
            EXPECT_EQ(cut, std::string(1, behind("se")).append("|CutFileStart"));
        for (const QStringView other : {kCutFileEnd, kSetSilenceEnd, QStringView()}) {
            m.vsFilterStep = other.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m)[0], behind("se"));
        }
        for (const qint16 silence : {2, 14}) {
            m.nCommand = silence;
            m.vsFilterStep = kSetSilenceEnd.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m), "t|");
            m.vsFilterStep.clear();
            EXPECT_EQ(told(ChainEvent::EditEnded, m), (std::string{behind("sed"), '|'}));
        }
        for (const ChainEvent event : {ChainEvent::EditEnded, ChainEvent::ErrorAnswered}) {
            m.nCommand = 16;
            EXPECT_EQ(told(event, m)[0], behind("sedh"));
            m.nCommand = 19;
            EXPECT_EQ(told(event, m)[0], 'x');
        }
    }
}

TEST(ChainStep, NothingIsAskedForByItself) {
    ChainMoment m;
    EXPECT_EQ(told(ChainEvent::SoundLoaded, m), "x|");
    EXPECT_EQ(told(ChainEvent::EditEnded, m), "-|");
    EXPECT_EQ(told(ChainEvent::ExportEnded, m), "+|");
    m.chCutEnd = true;
    EXPECT_EQ(told(ChainEvent::SoundLoaded, m), "e|CutFileEnd");
    m.nCommand = 1;
    m.vsFilterStep = kCutFileStart.toString();
    EXPECT_EQ(told(ChainEvent::EditEnded, m), "x|CutFileStart");
}

TEST(ChainStep, WhatDoesNotFitLeadsNowhereOrIsToldTo) {
    ChainMoment m;
    m.chSilenceEnds = m.chNormalize = m.cutsEnd = true;
    m.vsFilterStep = kSetSilenceEnd.toString();
    for (const qint16 command : {0, 3, 4, 15, -1}) {
        m.nCommand = command;
        EXPECT_EQ(told(ChainEvent::EditEnded, m), "-|Set Silence End");
    }
    m.nCommand = 19;
    EXPECT_EQ(told(ChainEvent::EditEnded, m), "x|Set Silence End") << "without head and level";
    for (const qint16 command : {2, 14}) {
        m.nCommand = command;
        for (const QStringView step : {kCutFileStart, kCutFileEnd, kAllFiltersDone,
                                       QStringView(u"set silence end"), QStringView(u" ")}) {
            m.vsFilterStep = step.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m)[0], '!') << step.toString().toStdString();
        }
        EXPECT_EQ(told(ChainEvent::ErrorAnswered, m)[0], '-');
    }
    m.lastFile = true;
    EXPECT_EQ(told(ChainEvent::ExportEnded, m)[0], 'F');
    m.appliesToEditor = true;
    EXPECT_EQ(told(ChainEvent::ExportEnded, m)[0], 'R');
}

}  // namespace
