// The layout-table convention of every return record. A record is a table
// copied from IRAS's layout: one named field per row with the layout's
// 1-based start, its width and its kind. Code places a value by naming its
// field, never by a bare column number, so a reviewer checks a position by
// reading the table beside the layout. A repeated part of a record (twelve
// months, three Section B payments, fifteen share-plan rows) is one block
// whose fields are given by their 1-based offset inside the block; a field of
// the n-th block is got by index.
//
//   namespace layout { inline constexpr RecordField kTaxNo{3, 12, FieldKind::Text}; }
//   Put(*Output, layout::kTaxNo, Text("TaxNo"));
//   Put(*Output, kMonths.Field(month, kOrdWages), amount);
#pragma once

#include <cstdint>
#include <string>

#include "platform/common/Date.h"
#include "submission/common/BStringOutput.h"

namespace iras {

// How the line builder places a field's value.
enum class FieldKind {
    Text,     // left-aligned, blank-filled, cut on the right (flag 0)
    Amount,   // amount text, right-aligned, zero-filled (flag 1)
    Integer,  // a count, right-aligned, zero-filled (flag 2)
    Date,     // YYYYMMDD, blanks for the empty date (flag 0x8000)
};

struct RecordField {
    int start = 1;  // first position, counted from 1 as in IRAS's layout
    int width = 0;
    FieldKind kind = FieldKind::Text;

    constexpr int Last() const { return start + width - 1; }  // last position, 1-based
    constexpr int Column() const { return start - 1; }        // the builder's 0-based column
};

// A block repeated count times from start, each length positions long.
struct RecordBlock {
    int start = 1;
    int length = 0;
    int count = 0;

    // The field (given by its offset in a block, 1-based) in block index
    // (0-based), as a field of the whole record.
    constexpr RecordField Field(int index, RecordField inBlock) const {
        return {start + index * length + inBlock.start - 1, inBlock.width, inBlock.kind};
    }
    constexpr int Last() const { return start + count * length - 1; }
};

// Where a return's header record holds the employer's fields. The header
// records of the returns carry the same fields, each return at its own
// positions (IR8A adds a payment type after the basis year).
struct EmployerHeaderFields {
    RecordField recordType, source, basisYear, organisationIdType, organisationIdNo, authorisedName,
        authorisedDesignation, employerName, telephone, email, batchIndicator, batchDate, divisionBranch,
        formName, filler;
};

// The builder flag of a kind.
int FlagOf(FieldKind kind);

// Places a value in its field on row 0 of the record being built.
void Put(BStringOutput& out, const RecordField& field, const std::string& value);
void Put(BStringOutput& out, const RecordField& field, const char* value);
void Put(BStringOutput& out, const RecordField& field, std::int64_t value);
void Put(BStringOutput& out, const RecordField& field, int value);
void Put(BStringOutput& out, const RecordField& field, const Date& value);
// A date field that stays blank for the empty date or when not wanted.
void PutDateOrBlank(BStringOutput& out, const RecordField& field, const Date& value, bool wanted = true);

}  // namespace iras
