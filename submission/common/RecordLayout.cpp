// Placing a field of a layout table (see RecordLayout.h).
#include "submission/common/RecordLayout.h"

namespace iras {

int FlagOf(FieldKind kind) {
    switch (kind) {
        case FieldKind::Text: return BStringOutput::kText;
        case FieldKind::Amount: return BStringOutput::kAmount;
        case FieldKind::Integer: return BStringOutput::kInteger;
        case FieldKind::Date: return BStringOutput::kDate;
    }
    return BStringOutput::kText;
}

void Put(BStringOutput& out, const RecordField& field, const std::string& value) {
    out.PutData(0, field.Column(), field.width, value, FlagOf(field.kind));
}

void Put(BStringOutput& out, const RecordField& field, const char* value) {
    out.PutData(0, field.Column(), field.width, value, FlagOf(field.kind));
}

void Put(BStringOutput& out, const RecordField& field, std::int64_t value) {
    out.PutData(0, field.Column(), field.width, value, FlagOf(field.kind));
}

void Put(BStringOutput& out, const RecordField& field, int value) {
    out.PutData(0, field.Column(), field.width, value, FlagOf(field.kind));
}

void Put(BStringOutput& out, const RecordField& field, const Date& value) {
    out.PutData(0, field.Column(), field.width, value, BStringOutput::kDate);
}

void PutDateOrBlank(BStringOutput& out, const RecordField& field, const Date& value, bool wanted) {
    if (wanted && !_IsDateNull(value)) {
        Put(out, field, value);
    } else {
        out.PutData(0, field.Column(), field.width, "", BStringOutput::kText);
    }
}

}  // namespace iras
