#include "documents/package_maker.h"

#include <zip.h>

#include "support/files.h"

QByteArray bytesOf(const char* name) {
    return tarnwick::test::contentOf(QStringLiteral(TARNWICK_TEST_DATA "/documents/") +
                                     QString::fromLatin1(name));
}

QByteArray utf16(QStringView text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

QByteArray zipOf(const Parts& parts) {
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(buffer);
    zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, nullptr);
    for (const auto& [name, content] : parts)
        zip_file_add(archive, name.constData(),
                     zip_source_buffer(archive, content.constData(),
                                       static_cast<zip_uint64_t>(content.size()), 0),
                     0);
    zip_close(archive);
    zip_source_open(buffer);
    zip_source_seek(buffer, 0, SEEK_END);
    QByteArray bytes(static_cast<qsizetype>(zip_source_tell(buffer)), '\0');
    zip_source_seek(buffer, 0, SEEK_SET);
    zip_source_read(buffer, bytes.data(), static_cast<zip_uint64_t>(bytes.size()));
    zip_source_close(buffer);
    zip_source_free(buffer);
    return bytes;
}

Parts workbookParts(const QByteArray& rows) {
    return {
        {"_rels/.rels",
         "<Relationships><Relationship Id='r1' Type='http://x/officeDocument' "
         "Target='/xl/workbook.xml'/></Relationships>"},
        {"xl/workbook.xml",
         "<x:workbook xmlns:x='m' xmlns:r='n'><x:sheets><x:sheet name='Chart' r:id='c'/>"
         "<x:sheet name='One' r:id='s' state='hidden'/></x:sheets></x:workbook>"},
        {"xl/_rels/workbook.xml.rels",
         "<Relationships><Relationship Id='s' Type='http://strict/worksheet' "
         "Target='/xl/worksheets/sheet1.xml'/><Relationship Id='c' Type='http://x/chartsheet' "
         "Target='chartsheets/sheet1.xml'/><Relationship Id='t' Type='http://x/sharedStrings' "
         "Target='../xl/./sharedStrings.xml'/><Relationship Id='f' Type='http://x/styles' "
         "Target='styles.xml'/></Relationships>"},
        {"xl/styles.xml",
         "<styleSheet><numFmts><numFmt numFmtId='164' "
         "formatCode='&quot;VO_&quot;000;;;&quot;VO_&quot;@'/></numFmts>"
         "<cellXfs><xf numFmtId='0'/><xf numFmtId='164'/></cellXfs></styleSheet>"},
        {"xl/sharedStrings.xml",
         "<sst><si><r><rPr/><t>Two </t></r><r><t xml:space='preserve'> runs</t></r>"
         "<rPh sb='0' eb='1'><t>spoken</t></rPh></si><si><t>a_x000D_b</t></si><si/></sst>"},
        {"XL/Worksheets/Sheet1.xml", "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"},
    };
}

Parts documentParts(const QByteArray& body) {
    return {
        {"_rels/.rels",
         "<Relationships><Relationship Id='r1' Type='http://x/officeDocument' "
         "Target='word/document.xml'/></Relationships>"},
        {"word/document.xml", "<w:document xmlns:w='m'><w:body>" + body + "</w:body></w:document>"},
    };
}

void replacePart(Parts& parts, const QByteArray& name, const QByteArray& content) {
    for (auto& [partName, partContent] : parts)
        if (partName == name) partContent = content;
}
