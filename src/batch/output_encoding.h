#pragma once

#include <QObject>
#include <QSet>

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class Trace;

// MP3 supports the first so many rates of opFrequency.
inline constexpr std::size_t kMp3Frequencies = 6;

// The output format: its controls, which show and hide each other and list what the engine can
// write, and the export of a file. UI thread.
class OutputEncoding : public QObject {
  public:
    OutputEncoding(forms::frmBatchProcessor& form, Run& run, const Services& services,
                   Trace& trace);

    // False, with a message box, if the format is MP3 and the encoder program is missing.
    bool encoderIsThere() const;

    // Starts writing the whole sound of EDTX to the project folder. If another file of the
    // operator has the output's name, it is moved to Raw_Files first. Guarded.
    void EDTX_Export_File();

  private:
    void opFormat_Click(int index);
    void showCodecs();
    void cbxCodecs_Click();
    void MP3_CBR_Enumerate();
    void ACM_Codecs();
    void UpdateCodecFormatsCombo(int index);
    QString setFormat();
    void keepForeignFile();

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    Trace& trace_;
    qint32 vlFrequency = 0;  // Hz; 0: determined by the codec
    qint32 vlChannels = 0;   // likewise
    QString vsOutputFile;    // full path of the file being written
    QSet<QString> written_;  // full paths of this run's outputs
};

}  // namespace tarnwick::batch
