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

// The output format: its controls, which show and hide one another and list what the engine can
// write, and the writing of a file. UI thread.
class OutputEncoding : public QObject {
  public:
    OutputEncoding(forms::frmBatchProcessor& form, Run& run, const Services& services,
                   Trace& trace);

    // True unless the format is MP3 and the encoder program is not there, which a box says.
    bool encoderIsThere() const;

    // Starts to write the whole sound of EDTX into the project folder. A file of the operator's
    // own that has the output's name is moved into Raw_Files first. Guarded.
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
    qint32 vlFrequency = 0;  // Hz; 0 leaves it to the codec
    qint32 vlChannels = 0;   // likewise
    QString vsOutputFile;    // full path of the file being written
    QSet<QString> written_;  // full paths of this run's outputs
};

}  // namespace tarnwick::batch
