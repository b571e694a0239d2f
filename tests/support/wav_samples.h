#pragma once

#include <gtest/gtest.h>

#include <QDataStream>
#include <QtEndian>
#include <algorithm>
#include <vector>

#include "support/files.h"

// 24-bit mono recordings, made and read without the sound engine.

namespace tarnwick::test {

using Samples = std::vector<qint32>;

inline constexpr int kRate = 44100;

// `ms` of a square wave; `level` on the scale of 0 to 32767.
inline Samples wave(int ms, int level) {
    Samples samples(static_cast<std::size_t>(ms) * kRate / 1000);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = (i / 20 % 2 ? -level : level) * 256 + static_cast<qint32>(i % 200);
    return samples;
}

inline Samples operator+(Samples first, const Samples& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

inline QByteArray wavHeader(std::size_t samples, int rate = kRate) {
    QByteArray header;
    QDataStream out(&header, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto bytes = static_cast<quint32>(samples * 3);
    out.writeRawData("RIFF", 4);
    out << 36 + bytes + bytes % 2;
    out.writeRawData("WAVEfmt ", 8);
    out << quint32{16} << quint16{1} << quint16{1} << static_cast<quint32>(rate)
        << static_cast<quint32>(rate * 3) << quint16{3} << quint16{24};
    out.writeRawData("data", 4);
    out << bytes;
    return header;
}

inline QByteArray wavFile(const Samples& samples, int rate = kRate) {
    QByteArray file = wavHeader(samples.size(), rate);
    for (const qint32 sample : samples)
        file.append(reinterpret_cast<const char*>(&sample), 3);
    return samples.size() % 2 ? file.append('\0') : file;
}

// The samples of a file that the program wrote; also checks its header.
inline Samples samplesOf(const QString& path, int rate = kRate) {
    const QByteArray all = contentOf(path);
    if (all.isEmpty()) return {};
    Samples samples(static_cast<std::size_t>(std::max<qsizetype>(all.size() - 44, 0) / 3));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = qFromLittleEndian<qint32>(all.constData() + 43 + 3 * i) >> 8;
    EXPECT_EQ(all.size() % 2, 0) << qPrintable(path);
    EXPECT_EQ(all.left(44), wavHeader(samples.size(), rate)) << qPrintable(path);
    return samples;
}

}  // namespace tarnwick::test
