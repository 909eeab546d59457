// The IR8A header record: who the employer is, for which basis year, and
// whether the batch is an Original or an Amendment; and the checks IRAS makes
// on the employer before it accepts an original file.
#include "platform/common/CommonLibrary.h"
#include "platform/host/HostFunctions.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

namespace {

std::string EmployerText(db::Query& employer, const char* column) {
    if (employer.IsEmpty()) return "";
    std::string text = employer.FieldByName(column).AsString();
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Characters, not bytes, of a UTF-8 text.
std::size_t CharacterCount(const std::string& text) {
    std::size_t count = 0;
    for (unsigned char c : text) {
        if ((c & 0xC0) != 0x80) ++count;
    }
    return count;
}

}  // namespace

void RIR8AeSubmission::PrepareIR8AHeader() {
    if (!Params.check) return;
    BStringOutput& out = *Output;
    out.PutData(0, 0, 1, "0", BStringOutput::kText);
    // For an Amendment the employer was not checked: a code that locates no
    // keyword takes the row the keyword query stands on.
    YEKeywordRecLocate(EmployerText(EmployerQuery, "EmployerSource"));
    out.PutData(0, 1, 1, _CStrToInt(KeywordProperty("YEProperty3")), BStringOutput::kText);
    out.PutData(0, 2, 4, BasisYear, BStringOutput::kText);
    out.PutData(0, 6, 2, "08", BStringOutput::kText);
    YEKeywordRecLocate(EmployerText(EmployerQuery, "PayerID"));
    out.PutData(0, 8, 1, KeywordProperty("YEProperty1"), BStringOutput::kText);
    out.PutData(0, 9, 12, EmployerText(EmployerQuery, "TaxRefNo"), BStringOutput::kText);
    out.PutData(0, 21, 30, EmployerText(EmployerQuery, "AuthorisedName"), BStringOutput::kText);
    out.PutData(0, 51, 30, EmployerText(EmployerQuery, "Designation"), BStringOutput::kText);
    out.PutData(0, 81, 60, EmployerText(EmployerQuery, "EmployerName"), BStringOutput::kText);
    out.PutData(0, 141, 20, EmployerText(EmployerQuery, "TelephoneNo"), BStringOutput::kText);
    out.PutData(0, 161, 60, EmployerText(EmployerQuery, "EmailAddress"), BStringOutput::kText);
    out.PutData(0, 221, 1, Params.original ? "O" : "A", BStringOutput::kText);
    // The batch date is the database server's, not the workstation's.
    out.PutData(0, 222, 8, _GetDBServerCurrentDate(), BStringOutput::kDate);
    out.PutData(0, 230, 30, EmployerText(EmployerQuery, "DivisionBranch"), BStringOutput::kText);
    out.PutData(0, 260, 10, "IR8A", BStringOutput::kText);
    out.PutData(0, 270, 930, "", BStringOutput::kText);
}

int RIR8AeSubmission::IR8AHeaderValidation() {
    ErrorList.clear();
    WriteInternalBanner("             IR8A HEADER VALIDATION             ");

    for (const char* line : {"Validating Source: ", "1 = Mindef", "4 = Government Department",
                             "5 = Statutory Board", "6 = Private Sector", "9 = Others"}) {
        WriteInternalMemo(line);
    }
    if (!YEKeywordRecLocate(EmployerText(EmployerQuery, "EmployerSource"))) {
        ErrorList.push_back("Invalid Source.");
    }

    for (const char* line : {"Validating Organization ID Type: ", "7 = UEN", "8 = UEN - Local",
                             "A = ASGD", "I = ITR", "C = CRN", "M = MCST", "G = GSTN",
                             "U = UENO"}) {
        WriteInternalMemo(line);
    }
    const std::string payerId = EmployerText(EmployerQuery, "PayerID");
    if (payerId.empty()) {
        ErrorList.push_back("Invalid Organization ID Type. Organization ID Type cannot be blank.");
    } else if (!YEKeywordRecLocate(payerId)) {
        ErrorList.push_back("Invalid Organization ID Type.");
    } else if (KeywordProperty("YEProperty1") == "G") {
        // IRAS stopped taking GST numbers as the organisation id; the file
        // is refused whatever the basis year.
        ErrorList.push_back(
            "Invalid Organization ID Type. G is no longer applicable with effect from Year of "
            "Assessment 2013. File is not created.");
    }

    WriteInternalMemo("Validating Organization ID No.");
    if (EmployerText(EmployerQuery, "TaxRefNo").empty()) {
        ErrorList.push_back("Invalid Organization ID No. cannot be blank.");
    }
    WriteInternalMemo("Validating Name of Authorised Person");
    if (EmployerText(EmployerQuery, "AuthorisedName").empty()) {
        ErrorList.push_back("Invalid Name of Authorised Person.");
    }
    WriteInternalMemo("Validating Name of Employer");
    if (EmployerText(EmployerQuery, "EmployerName").empty()) {
        ErrorList.push_back("Invalid employer name.");
    }
    WriteInternalMemo("Validating Telephone number of Authorised Person");
    if (EmployerText(EmployerQuery, "TelephoneNo").empty()) {
        ErrorList.push_back("Telephone number cannot be blank.");
    }
    WriteInternalMemo("Validating Email Address of Authorised Person");
    const std::string email = EmployerText(EmployerQuery, "EmailAddress");
    if (email.empty()) {
        ErrorList.push_back("Email address cannot be blank.");
    } else if (CharacterCount(email) > 50) {
        // The record has 60 places, but IRAS accepts no more than 50.
        ErrorList.push_back("Email address cannot be more than 50 characters.");
    }
    return ErrorList.empty() ? 1 : 0;
}

}  // namespace iras
