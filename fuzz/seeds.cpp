#include <sndfile.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "documents/package_maker.h"
#include "sound/samples/wav_codecs.h"
#include "sound/writing/sound_writer.h"
#include "support/test_sounds.h"

// Creates a folder of valid files for each target, which the fuzzer then mutates: seeds FOLDER.

namespace {

namespace fs = std::filesystem;
using namespace tarnwick::sound;

class Seeds {
  public:
    explicit Seeds(fs::path folder) : folder_(std::move(folder)) {}

    // Adds one seed to each target.
    void add(const std::string& bytes, std::initializer_list<const char*> targets) {
        for (const char* target : targets) {
            fs::create_directories(folder_ / target);
            std::ofstream out(folder_ / target / std::to_string(++count_), std::ios::binary);
            out << bytes;
        }
    }

  private:
    fs::path folder_;
    int count_ = 0;
};

std::string contentOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string written(const OutputFormat& output, std::int64_t frames) {
    const TempFolder folder;
    const ToneSound tone({output.format.rate, output.format.channels, 24, false}, frames, 440);
    writeSound(tone, 0, frames, output, folder.path() / "seed");
    return contentOf(folder.path() / "seed");
}

void addPlain(Seeds& seeds) {
    constexpr std::int64_t kFrames = 301;
    for (const int bits : {8, 16, 24, 32, 0})
        for (const int channels : {1, 2}) {
            const AudioFormat format{44100, channels, bits == 0 ? 32 : bits, bits == 0};
            seeds.add(written({Container::Wav, format}, kFrames), {"wave_header", "source"});
            seeds.add(written({Container::Aiff, format}, kFrames), {"aiff_header", "source"});
        }
    // Kinds that we read but do not write.
    for (const int kind : {SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, SF_FORMAT_RF64 | SF_FORMAT_PCM_16,
                           SF_FORMAT_WAV | SF_FORMAT_DOUBLE, SF_FORMAT_AIFF | SF_FORMAT_DOUBLE,
                           SF_FORMAT_AIFF | SF_FORMAT_PCM_U8,
                           SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE}) {
        const TempFolder folder;
        SF_INFO info = {};
        info.samplerate = 22050;
        info.channels = 2;
        info.format = kind;
        SNDFILE* file = sf_open((folder.path() / "seed").c_str(), SFM_WRITE, &info);
        const std::vector<short> samples(2 * kFrames, 1234);
        sf_writef_short(file, samples.data(), kFrames);
        sf_close(file);
        const bool aiff = (kind & SF_FORMAT_TYPEMASK) == SF_FORMAT_AIFF;
        seeds.add(contentOf(folder.path() / "seed"),
                  {aiff ? "aiff_header" : "wave_header", "source"});
    }
}

void addCodecs(Seeds& seeds) {
    for (int codec = kALawCodec; codec <= kGsm610; ++codec)
        for (const AudioFormat& format : wavCodecs()[static_cast<std::size_t>(codec)].formats)
            if (format.rate == 8000)
                seeds.add(written({Container::WavCodec, format, 0, codec}, 1500),
                          {"wave_header", "source"});
}

void addMp3(Seeds& seeds) {
    std::string joined = std::string("ID3\4\0\0\0\0\0\x8", 10) + std::string(8, '\0');
    for (const auto& [rate, channels, bitRate] :
         {std::array{8000, 1, 16000}, {24000, 2, 48000}, {44100, 1, 64000}, {44100, 2, 128000}}) {
        const std::string bytes =
            written({Container::Mp3, {rate, channels, 16, false}, bitRate}, rate / 8);
        seeds.add(bytes, {"mp3", "long_mp3", "source"});
        joined += bytes;
    }
    seeds.add(joined + "TAG" + std::string(125, ' '), {"mp3", "source"});
}

void addDocuments(Seeds& seeds) {
    for (const char* name : {"letter.doc", "script.doc", "script.xls", "encrypted.xls"})
        seeds.add(bytesOf(name).toStdString(), {"compound_file"});
    seeds.add(bytesOf("script.xlsx").toStdString(), {"workbook"});
    const std::string rows =
        "<row r='2'><c r='B2' t='s'><v>0</v></c><c s='1'><v>43831.75</v></c><c t='inlineStr'><is>"
        "<r><t>in</t></r></is></c></row><row><c t='b'><v>1</v></c><c t='str'><f>A1</f><v>x_x000D_"
        "</v></c><c t='e'><v>#DIV/0!</v></c><c s='2'><v>-0.125</v></c></row>";
    const std::string strings =
        "<sst><si><r><t>two</t></r><r><t xml:space='preserve'> runs</t></r><rPh><t>said</t></rPh>"
        "</si><si><t>plain &amp; &#x41;</t></si></sst>";
    const std::string styles =
        "<styleSheet><numFmts><numFmt numFmtId='164' formatCode='[Red]dd/mm/yyyy\\ hh:mm:ss.00;"
        "\"a\"@'/><numFmt numFmtId='165' formatCode='#,##0.00%;[&lt;0](0.0E+00)'/></numFmts>"
        "<cellXfs><xf numFmtId='0'/><xf numFmtId='164'/><xf numFmtId='165'/></cellXfs>"
        "</styleSheet>";
    seeds.add(rows + '\0' + strings + '\0' + styles, {"workbook_parts"});
    seeds.add(zipOf(workbookParts(QByteArray::fromStdString(rows))).toStdString(), {"workbook"});
}

void addWordDocuments(Seeds& seeds) {
    const std::string body =
        "<w:sdt><w:sdtContent><w:tbl><w:tblPr/><w:tr><w:trPr><w:gridBefore w:val='1'/></w:trPr>"
        "<w:tc><w:tcPr><w:gridSpan w:val='2'/><w:vMerge w:val='restart'/></w:tcPr><w:p><w:pPr>"
        "<w:rPr><w:del/></w:rPr></w:pPr><w:hyperlink><w:r><w:t>a</w:t></w:r></w:hyperlink></w:p>"
        "<w:tbl><w:tr><w:tc><w:p><w:r><w:tab/><w:br/></w:r></w:p></w:tc></w:tr></w:tbl></w:tc>"
        "<w:tc><w:tcPr><w:hMerge/></w:tcPr><w:p><w:r><w:rPr><w:vanish/></w:rPr><w:t>b</w:t></w:r>"
        "</w:p></w:tc></w:tr><w:tr><w:tc><w:tcPr><w:vMerge/></w:tcPr><w:p/></w:tc><w:tc><w:p>"
        "<w:fldChar w:fldCharType='begin'/><w:instrText>PAGE</w:instrText><w:fldChar "
        "w:fldCharType='separate'/><w:t xml:space='preserve'> 7 </w:t><w:fldChar "
        "w:fldCharType='end'/><mc:AlternateContent><mc:Choice><w:sym w:char='2192'/></mc:Choice>"
        "<mc:Fallback><w:noBreakHyphen/></mc:Fallback></mc:AlternateContent></w:p></w:tc></w:tr>"
        "</w:tbl></w:sdtContent></w:sdt>";
    seeds.add(body, {"word_body"});
    seeds.add(zipOf(documentParts(QByteArray::fromStdString(body))).toStdString(),
              {"word_document"});
    seeds.add(bytesOf("script.docx").toStdString(), {"word_document"});
}

void addEdits(Seeds& seeds) {
    std::string edits;
    for (int i = 0; i < 180; ++i)
        edits += static_cast<char>(i * i * 37 + i);
    seeds.add(edits, {"timeline"});
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    Seeds seeds(arguments[1]);
    addPlain(seeds);
    addCodecs(seeds);
    addMp3(seeds);
    addDocuments(seeds);
    addWordDocuments(seeds);
    addEdits(seeds);
    return 0;
}
