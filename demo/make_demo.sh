#!/usr/bin/env bash
# Makes the demo session: harbour_tour.wav, one long take in which a speech synthesiser reads ten
# prompts, and harbour_tour.xlsx, its script. Needs espeak-ng, sox and LibreOffice Calc. The
# results are committed; run this only to change them.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rate=22050  # the synthesiser's own rate; keeps the folder small

# File name | pause after the prompt in seconds | text
prompts=(
    "HT_001_Welcome|2.1|Welcome to Marrowby, and to our short walk around the old harbour."
    "HT_002_Quay|1.9|You are standing on the Long Quay, built in 1782."
    "HT_003_Fish_Market|2.3|The market behind you opens at four o'clock every morning."
    "HT_004_Crane|2.0|Please look up. The wooden crane still lifts its own weight."
    "HT_005_Customs_House|2.2|The white building is the Customs House."
    "HT_006_Bell|1.8|Its bell rang once for every ship that came home."
    "HT_007_Lighthouse|2.4|Across the water, the lighthouse has been dark since the storm."
    "HT_008_Ferry|2.0|To reach it, take the ferry from step nine."
    "HT_009_Tide|2.1|Mind the stones at low tide. They are very slippery."
    "HT_010_Goodbye|0|Thank you for listening. We hope to see you again soon."
)

# -R makes sox repeatable and -D turns dither off, so that a second run with the same voice makes
# the same take.
pieces=()
for entry in "${prompts[@]}"; do
    IFS='|' read -r name pause text <<<"$entry"
    espeak-ng -v en-gb -s 142 -p 42 -a 120 -w "$work/said.wav" "$text"
    # Trim the synthesiser's own silence at both ends.
    sox -R -D "$work/said.wav" "$work/trimmed.wav" silence 1 0.005 0.5% reverse \
        silence 1 0.005 0.5% reverse
    sox -R -D "$work/trimmed.wav" "$work/$name.wav" pad 0 "$pause"
    pieces+=("$work/$name.wav")
done
sox -R -D "${pieces[@]}" "$work/speech.wav" norm -4 pad 0.6 0.7

# Room noise at about -60 dB under everything, so that no pause is digital silence.
length=$(soxi -s "$work/speech.wav")
sox -R -D -r $rate -b 16 -c 1 -n "$work/room.wav" synth "${length}s" pinknoise \
    gain -n -48 lowpass 6000
sox -R -D -m -v 1 "$work/speech.wav" -v 1 "$work/room.wav" -b 16 "$here/harbour_tour.wav"

# The workbook: LibreOffice converts it from a flat spreadsheet with a header row.
{
    cat <<'HEAD'
<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
    xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
    xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
    xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
    xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
    office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
<office:automatic-styles>
<style:style style:name="names" style:family="table-column">
<style:table-column-properties style:column-width="5.5cm"/></style:style>
<style:style style:name="texts" style:family="table-column">
<style:table-column-properties style:column-width="15cm"/></style:style>
<style:style style:name="head" style:family="table-cell">
<style:text-properties fo:font-weight="bold"/></style:style>
</office:automatic-styles>
<office:body><office:spreadsheet><table:table table:name="Harbour Tour">
<table:table-column table:style-name="names"/><table:table-column table:style-name="texts"/>
<table:table-row>
<table:table-cell table:style-name="head" office:value-type="string"><text:p>File Name</text:p></table:table-cell>
<table:table-cell table:style-name="head" office:value-type="string"><text:p>Prompt</text:p></table:table-cell>
</table:table-row>
HEAD
    for entry in "${prompts[@]}"; do
        IFS='|' read -r name pause text <<<"$entry"
        printf '<table:table-row>'
        printf '<table:table-cell office:value-type="string"><text:p>%s</text:p></table:table-cell>' \
            "$name" "$text"
        printf '</table:table-row>\n'
    done
    echo '</table:table></office:spreadsheet></office:body></office:document>'
} >"$work/harbour_tour.fods"
soffice "-env:UserInstallation=file://$work/profile" --headless \
    --convert-to "xlsx:Calc MS Excel 2007 XML" --outdir "$work" "$work/harbour_tour.fods" >/dev/null 2>&1
mv "$work/harbour_tour.xlsx" "$here/harbour_tour.xlsx"
