// The checker against a small IR8A file laid out by hand from the IR8A header,
// detail and trailer tables, each test with planted faults and the findings
// they must give, worked out from the same tables.
#include "platform/ais/AisFileChecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ais/AisTestFiles.h"

namespace iras {
namespace {

using test::CheckRecords;
using test::RecordText;
using test::TempFile;
using test::With;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string IR8AHeader() {
    RecordText header(1200);
    header.At(1, "0").At(2, "6").At(3, "2023").At(7, "08").At(9, "7").At(10, "199912345A").At(22, "TAN AH KOW");
    header.At(222, "O").At(223, "20240115").At(231, "HQ").At(261, "IR8A");
    return header;
}

// A detail with every amount zero: dollar fields zero-filled, cents fields eleven zeros.
RecordText IR8ADetail(const char* idNo) {
    RecordText detail(1200);
    detail.At(1, "1").At(2, "1").At(3, idNo).At(15, "EMPLOYEE").At(251, "301").At(254, "M");
    detail.At(255, "19800229").At(272, "20230101").At(280, "20231231");
    for (auto [column, width] : {std::pair{263, 9}, {288, 5}, {293, 5}, {298, 7}, {305, 5}, {310, 9}, {319, 9},
                                 {328, 9}, {337, 9}, {346, 9}, {355, 9}, {364, 9}, {373, 9}})
        detail.At(column, std::string(static_cast<std::size_t>(width), '0'));
    detail.At(400, "00000000000");
    for (int column = 428; column <= 549; column += 11) detail.At(column, "00000000000");
    return detail;
}

// Two employees:
//   1: income 50,000 = salary 40,000 + bonus 8,000 + others 2,000; donation 10.01
//      rounded up to 11; CPF 6,000; mosque fund zero, placed as "0" and blanks.
//   2: income 12,345 = salary 12,345; CPF 2,469; mosque fund 2; exempt income -7.
// The trailer adds them: 62,345; 52,345; 8,000; 0; 2,000; -7; 0; 0; 11; 8,469; 0; 2.
std::vector<std::string> ValidIR8A() {
    RecordText first = IR8ADetail("S1234567D");
    first.At(263, "00005000{").At(288, "0    ").At(293, "0001A").At(298, "000600{");
    first.At(310, "00004000{").At(319, "00000800{").At(337, "00000200{");
    first.At(400, "0000012345{").At(411, "20230101").At(419, "20231231").At(427, "M");

    RecordText second = IR8ADetail("S7654321A");
    second.At(263, "00001234E").At(288, "0000B").At(298, "000246I").At(310, "00001234E").At(355, "00000000P");

    RecordText trailer(1200);
    trailer.At(1, "2").At(2, "000002");
    const char* totals[] = {"6234E", "5234E", "800{", "0", "200{", "00000000000P",
                            "0",     "0",     "1A",   "846I", "0", "00000000000B"};
    for (int i = 0; i < 12; ++i) trailer.At(8 + 12 * i, totals[i]);
    return {IR8AHeader(), first, second, trailer};
}

TEST(CheckIR8AFile, HandLaidFileWithTwoEmployeesPasses) {
    const AisCheckResult result = CheckRecords(ValidIR8A());
    EXPECT_THAT(result.Describe(), IsEmpty());
    EXPECT_EQ(result.kind, AisKind::IR8A);
    EXPECT_EQ(result.detailRecords, 2);
}

TEST(CheckIR8AFile, RecordOneByteShortIsTheOnlyFinding) {
    // Its fields would read shifted, so they and the totals are left alone.
    std::vector<std::string> records = ValidIR8A();
    records[1].erase(600, 1);
    EXPECT_THAT(CheckRecords(records).Describe(),
                ElementsAre("line 2: record is 1199 characters long; an IR8A detail record has 1200"));
}

TEST(CheckIR8AFile, TrailerTotalsAreComparedAsSignedNumbers) {
    std::vector<std::string> records = ValidIR8A();
    records[3] = With(With(records[3], 20, "800{        "), 32, "5234E       ");  // salary and bonus exchanged
    EXPECT_THAT(
        CheckRecords(records).Describe(),
        ElementsAre("line 4, column 20: total of gross salary is 8000 but the detail records add up to 52345",
                    "line 4, column 32: total of bonus is 52345 but the detail records add up to 8000"));
    // -7 unpadded ("P") is the details' "00000000P"; +7 ("G") is not.
    records = ValidIR8A();
    records[3] = With(records[3], 68, "P           ");
    EXPECT_THAT(CheckRecords(records).Describe(), IsEmpty());
    records[3] = With(records[3], 68, "G");
    EXPECT_THAT(CheckRecords(records).Describe(),
                ElementsAre("line 4, column 68: total of exempt income is 7 but the detail records add up to -7"));
}

TEST(CheckIR8AFile, BadOverpunchLetterIsNamedAndItsTotalNotCompared) {
    std::vector<std::string> records = ValidIR8A();
    records[2] = With(records[2], 310, "00001234S");
    EXPECT_THAT(CheckRecords(records).Describe(),
                ElementsAre("line 3, column 310: gross salary \"00001234S\" is not an amount (digits, the last "
                            "one may carry the sign)"));
}

TEST(CheckIR8AFile, WrongTrailerCountIsNamed) {
    std::vector<std::string> records = ValidIR8A();
    records[3] = With(records[3], 2, "000003");
    EXPECT_THAT(CheckRecords(records).Describe(),
                ElementsAre("line 4, column 2: record count is 3 but the file has 2 detail records"));
    records[3] = With(records[3], 2, "00A002");
    EXPECT_THAT(CheckRecords(records).Describe(),
                ElementsAre("line 4, column 2: record count \"00A002\" is not a whole number"));
}

TEST(CheckIR8AFile, RecordTypeAndOrderFaultsNameTheirLines) {
    const std::vector<std::string> valid = ValidIR8A();
    EXPECT_THAT(CheckRecords({valid[1], valid[0], valid[2], valid[3]}).Describe(),
                ElementsAre("line 1, column 1: the file must open with the header record \"0\"; this is a "
                            "detail record",
                            "line 2, column 1: a header record \"0\" may only be the first record of the file"));
    EXPECT_THAT(CheckRecords({valid[0], valid[1], valid[2]}).Describe(),
                ElementsAre("the file has no trailer record \"2\"; an IR8A file ends with one"));
    const std::string unknown = With(valid[2], 1, "3");
    EXPECT_THAT(CheckRecords({valid[0], valid[1], valid[2], unknown, valid[3], valid[3]}).Describe(),
                ElementsAre("line 4, column 1: unknown record type \"3\"; records are \"0\" header, \"1\" detail "
                            "or \"2\" trailer",
                            "line 5, column 1: the trailer record must be the last record; 1 record follows it",
                            "line 6, column 1: a second trailer record; the trailer is on line 5"));
}

TEST(CheckIR8AFile, DatesAreRealDaysAndBlankOnlyWhereTheLayoutAllows) {
    std::vector<std::string> records = ValidIR8A();
    records[0] = With(records[0], 222, "X20240231");  // batch indicator, batch date
    records[1] = With(With(With(records[1], 280, "20230230"), 255, "20231301"), 411, "2023 101");
    records[2] = With(With(With(records[2], 255, "        "), 272, "        "), 613, "        ");
    const AisCheckResult result = CheckRecords(records);
    EXPECT_THAT(result.Describe(),
                ElementsAre("line 1, column 222: batch indicator \"X\" must be \"O\" or \"A\"",
                            "line 1, column 223: batch date \"20240231\" is not a real date",
                            "line 2, column 255: date of birth \"20231301\" is not a real date",
                            "line 2, column 280: period to \"20230230\" is not a real date",
                            "line 2, column 411: commission from \"2023 101\" is not a date in the form YYYYMMDD",
                            "line 3, column 255: warning: date of birth is blank",
                            "line 3, column 272: period from is blank"));
}

TEST(CheckIR8AFile, HeaderWithoutDetailsOnlyWarns) {
    RecordText trailer(1200);
    trailer.At(1, "2").At(2, "000000");
    for (int i = 0; i < 12; ++i) trailer.At(8 + 12 * i, "0");
    const AisCheckResult result = CheckRecords({IR8AHeader(), trailer});
    EXPECT_THAT(result.Describe(), ElementsAre("warning: the file holds no detail records"));
    EXPECT_FALSE(result.HasErrors());
    EXPECT_TRUE(result.HasWarnings());
}

TEST(CheckAisFileBytes, LineEndsControlBytesAndEmptyLinesAreFindings) {
    const std::vector<std::string> records = ValidIR8A();
    TempFile file;
    file.WriteBytes(records[0] + "\r\n" + records[1] + "\n" + records[2] + "\r\n" + records[3]);
    EXPECT_THAT(CheckAisFile(file.Path()).Describe(),
                ElementsAre("line 2, column 1201: record ends with a bare LF; records end with CR LF",
                            "line 4, column 1201: the last record does not end with CR LF"));
    EXPECT_THAT(CheckRecords({records[0], With(records[1], 31, "\t"), records[2], records[3], ""}).Describe(),
                ElementsAre("line 2, column 31: control character \\x09 in the record",
                            "line 4, column 1: the trailer record must be the last record; 1 record follows it",
                            "line 5: empty record"));
}

TEST(CheckAisFileInput, MissingEmptyFolderOrUnreadableGiveOneFindingNamingTheFile) {
    const auto missing = std::filesystem::temp_directory_path() / "no_such_ais_file_9d1f.txt";
    EXPECT_THAT(CheckAisFile(missing).Describe(), ElementsAre("file not found: " + missing.string()));
    TempFile file;
    file.WriteBytes("");
    EXPECT_THAT(CheckAisFile(file.Path()).Describe(), ElementsAre("the file is empty: " + file.Path().string()));
    const auto folder = std::filesystem::temp_directory_path();
    EXPECT_THAT(CheckAisFile(folder).Describe(), ElementsAre(folder.string() + " is a folder, not an AIS file"));
    if (::geteuid() != 0) {  // root reads any file
        file.WriteRecords(ValidIR8A());
        std::filesystem::permissions(file.Path(), std::filesystem::perms::none);
        EXPECT_THAT(CheckAisFile(file.Path()).Describe(), ElementsAre("cannot read " + file.Path().string()));
    }
}

TEST(CheckAisFileKind, UnknownFormNameMissingHeaderOrDisagreeingKindAreErrors) {
    std::vector<std::string> records = ValidIR8A();
    AisCheckResult result = CheckRecords({With(records[0], 261, "IR9X"), records[1], records[3]});
    EXPECT_FALSE(result.kind.has_value());
    ASSERT_EQ(result.findings.size(), 1u);
    EXPECT_THAT(result.findings[0].message, HasSubstr("cannot tell which return"));
    result = CheckRecords({records[1], records[2]});
    ASSERT_EQ(result.findings.size(), 1u);
    EXPECT_THAT(result.findings[0].message, HasSubstr("has no header record"));
    // Read as IR8S, the IR8A form name sits two columns later than IR8S keeps it.
    EXPECT_THAT(CheckRecords(records, AisKind::IR8S).Describe(),
                Contains("line 1, column 259: form name is \"  IR8A\"; an IR8S file has \"IR8S\""));
}

TEST(CheckAisFileFuzz, RandomBytesAndDamagedFilesNeverCrash) {
    std::uint32_t state = 12345;
    auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
    TempFile file;
    for (int round = 0; round < 40; ++round) {
        std::string bytes(next() % 4000 + 1, '\0');
        for (char& c : bytes) c = static_cast<char>(next() % 256);
        if (round % 4 == 0) bytes[0] = '0';  // sometimes pretend to be a header
        file.WriteBytes(bytes);
        EXPECT_TRUE(CheckAisFile(file.Path()).HasErrors()) << "round " << round;
    }
    std::string valid;
    for (const std::string& record : ValidIR8A()) valid += record + "\r\n";
    for (int round = 0; round < 40; ++round) {  // a few bytes overwritten, the end cut off, read as each kind
        std::string bytes = valid;
        for (int hit = 0; hit < 5; ++hit) bytes[next() % bytes.size()] = static_cast<char>(next() % 256);
        bytes.resize(next() % bytes.size() + 1);
        file.WriteBytes(bytes);
        for (AisKind kind : {AisKind::IR8A, AisKind::IR8S, AisKind::A8A, AisKind::A8B})
            (void)CheckAisFile(file.Path(), kind);
        (void)CheckAisFile(file.Path());
    }
}

}  // namespace
}  // namespace iras
