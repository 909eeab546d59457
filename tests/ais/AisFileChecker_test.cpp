// The checker against a small IR8A file laid out by hand from the IR8A header,
// detail and trailer tables, each test with planted faults and the findings
// they must give, worked out from the same tables.
#include "platform/ais/AisFileChecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/ais/AisTestFiles.h"

namespace iras {
namespace {

using test::CheckRecords;
using test::IR8AHeader;
using test::RecordText;
using test::TempFile;
using test::ValidIR8A;
using test::With;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

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

TEST(CheckIR8AFile, AnIdNumberTwiceInOneReturnIsAnErrorOnTheSecond) {
    struct Case {
        const char* what;
        std::string idType, idNo;
        std::vector<std::string> findings;
    };
    const std::vector<Case> cases = {
        {"same type and number", "1", "S1234567D",
         {"line 3, column 3: ID number \"S1234567D\" is already on line 2; an employee is reported once in a return"}},
        {"same number under another ID type", "2", "S1234567D", {}},
        {"number differs in its last letter", "1", "S1234567E", {}},
    };
    for (const Case& c : cases) {
        std::vector<std::string> records = ValidIR8A();
        records[2] = With(With(records[2], 2, c.idType), 3, c.idNo);
        EXPECT_EQ(CheckRecords(records).Describe(), c.findings) << c.what;
    }
}

TEST(CheckAisFileBytes, AFaultOfEveryRecordIsListedTwentyTimesThenCounted) {
    // 25 records, every one ended by a bare LF: 20 listed, 5 counted.
    std::vector<std::string> records = ValidIR8A();
    std::string bytes = records[0] + "\n";
    for (int i = 0; i < 23; ++i) {
        const std::string id = "S" + std::to_string(1000000 + i) + "A";
        bytes += With(records[2], 3, id) + "\n";
    }
    bytes += records[3] + "\n";  // its count and totals disagree, which is found once each
    TempFile file;
    file.WriteBytes(bytes);
    const AisCheckResult result = CheckAisFile(file.Path());
    int bareLf = 0;  // the closing finding stands for the 5 not listed
    for (const AisFinding& finding : result.findings)
        if (finding.message.find("bare LF") != std::string::npos) bareLf += finding.count;
    EXPECT_EQ(bareLf, 25);
    const std::vector<std::string> described = result.Describe();
    EXPECT_EQ(std::count_if(described.begin(), described.end(),
                            [](const std::string& line) { return line.find("bare LF") != std::string::npos; }),
              21);  // 20 listed and the count
    EXPECT_THAT(described, Contains("5 more findings like line 1's (record ends with a bare LF; records end with CR "
                                    "LF) are not listed"));
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
    const AisCheckResult unknown = CheckRecords({With(records[0], 261, "IR9X"), records[1], records[3]});
    EXPECT_FALSE(unknown.kind.has_value());
    EXPECT_THAT(unknown.Describe(), ElementsAre(HasSubstr("cannot tell which return")));
    EXPECT_THAT(CheckRecords({records[1], records[2]}).Describe(), ElementsAre(HasSubstr("has no header record")));
    // Read as IR8S, the IR8A form name sits two columns later than IR8S keeps it.
    EXPECT_THAT(CheckRecords(records, AisKind::IR8S).Describe(),
                Contains("line 1, column 259: form name is \"  IR8A\"; an IR8S file has \"IR8S\""));
}

TEST(CheckAisFileFuzz, RandomBytesAndDamagedFilesNeverCrash) {
    std::uint32_t state = 12345;
    auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
    std::string valid;
    for (const std::string& record : ValidIR8A()) valid += record + "\r\n";
    TempFile file;
    for (int round = 0; round < 80; ++round) {
        // Even rounds: random bytes, sometimes opening like a header. Odd
        // rounds: a valid file with a few bytes overwritten and its end cut off.
        std::string bytes = valid;
        if (round % 2 == 0) {
            bytes.assign(next() % 4000 + 1, '\0');
            for (char& c : bytes) c = static_cast<char>(next() % 256);
            if (round % 8 == 0) bytes[0] = '0';
        } else {
            for (int hit = 0; hit < 5; ++hit) bytes[next() % bytes.size()] = static_cast<char>(next() % 256);
            bytes.resize(next() % bytes.size() + 1);
        }
        file.WriteBytes(bytes);
        const AisCheckResult result = CheckAisFile(file.Path());
        EXPECT_TRUE(round % 2 == 1 || result.HasErrors()) << "round " << round;
        for (AisKind kind : {AisKind::IR8A, AisKind::IR8S, AisKind::A8A, AisKind::A8B})
            (void)CheckAisFile(file.Path(), kind);
    }
}

}  // namespace
}  // namespace iras
