// The query object of the jobs and the form (see Query.h): SQL text and
// parameters, a result read whole, a cursor with the payroll's rules, fields by
// name, and the editable result of a one-table select.
//
// Editing follows the payroll's data sets: moving the cursor while a row is
// being edited posts it first, so a change is not lost by a Next(); closing
// the query (or changing its SQL) drops a change that was not posted.

#include "platform/database/Query.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

#include "platform/common/Text.h"
#include "platform/database/Connection.h"
#include "platform/database/SqlDialect.h"

namespace iras::db {
namespace {

// A real number as the database shows it: fifteen significant digits, with
// no trailing zeros and no ".0" on a whole number (1234.5 -> "1234.5",
// 2023.0 -> "2023", 0.1 + 0.2 -> "0.3").
std::string RealText(double value) {
    if (value == 0.0) return "0";  // also for -0.0
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
    if (result.ec != std::errc()) return std::to_string(value);
    return std::string(buffer, result.ptr);
}

std::optional<double> ParseReal(const std::string& text) {
    std::string trimmed = TrimSpace(text);
    if (!trimmed.empty() && trimmed.front() == '+') trimmed.erase(0, 1);
    double value = 0.0;
    const auto result = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), value);
    if (trimmed.empty() || result.ec != std::errc() || result.ptr != trimmed.data() + trimmed.size()) {
        return std::nullopt;
    }
    return value;
}

// The columns of a result by name, without regard to letter case: a job
// reads each field of every employee by name, over a hundred times a record.
// Open addressing over the folded name's hash, with the hash kept beside the
// column, finds a name in one hash of it and, mostly, one comparison. A
// result with the names of the last one (a section query opened again for
// the next employee) keeps the index as it is.
class FieldIndex {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    // The first of two equal names wins, as in "A JOIN B ... *".
    void Build(const std::vector<ResultColumn>& columns) {
        if (columns.size() == names_.size() &&
            std::equal(columns.begin(), columns.end(), names_.begin(),
                       [](const ResultColumn& column, const std::string& name) { return column.name == name; }))
            return;
        names_.clear();
        for (const ResultColumn& column : columns) names_.push_back(column.name);
        std::size_t capacity = 16;
        while (capacity < names_.size() * 2) capacity *= 2;
        slots_.assign(capacity, Slot{});
        for (std::size_t column = 0; column < names_.size(); ++column) {
            const std::size_t hash = Hash(names_[column]);
            std::size_t at = hash & (capacity - 1);
            for (; slots_[at].column != npos; at = (at + 1) & (capacity - 1))
                if (slots_[at].hash == hash && Same(names_[slots_[at].column], names_[column])) break;
            if (slots_[at].column == npos) slots_[at] = Slot{hash, column};
        }
    }

    std::size_t Find(std::string_view name) const {
        if (slots_.empty()) return npos;
        const std::size_t hash = Hash(name);
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask; slots_[at].column != npos; at = (at + 1) & mask) {
            const Slot& slot = slots_[at];
            if (slot.hash == hash && Same(names_[slot.column], name)) return slot.column;
        }
        return npos;
    }

private:
    struct Slot {
        std::size_t hash = 0;
        std::size_t column = npos;
    };

    // The name's bytes eight at a time, each with the bit that tells a
    // letter's cases apart set: two spellings of a name hash alike (and a
    // few other names too, which the comparison tells apart).
    static std::size_t Hash(std::string_view name) noexcept {
        constexpr std::uint64_t fold = 0x2020202020202020ull;
        std::uint64_t hash = name.size();
        std::size_t at = 0;
        for (; at + 8 <= name.size(); at += 8) {
            std::uint64_t word;
            std::memcpy(&word, name.data() + at, 8);
            hash = (hash ^ (word | fold)) * 0x9E3779B97F4A7C15ull;
        }
        if (at < name.size()) {
            std::uint64_t word = 0;
            std::memcpy(&word, name.data() + at, name.size() - at);
            hash = (hash ^ (word | fold)) * 0x9E3779B97F4A7C15ull;
        }
        return static_cast<std::size_t>(hash ^ (hash >> 29));
    }

    // Mostly the name is asked as the result spells it.
    static bool Same(std::string_view a, std::string_view b) noexcept { return a == b || SameIgnoringCase(a, b); }

    std::vector<std::string> names_;
    std::vector<Slot> slots_;
};

std::int64_t RoundToInteger(double value) {
    if (!std::isfinite(value) || std::fabs(value) >= 9.2e18) return 0;
    return std::llround(value);
}

// The rows of a forward read kept in a temporary file, to be read again
// without running the statement again. Each row is its length in bytes and
// its values, each a tag byte and its bytes: nothing (NULL), eight bytes of
// an integer or a real, or a length and the text. A row goes to the file and
// comes back from it in one piece. The file is removed by the system when it
// closes, whatever ends the process.
class RowSpool {
public:
    explicit RowSpool(std::vector<ResultColumn> columns) : columns_(std::move(columns)), file_(std::tmpfile()) {}
    RowSpool(const RowSpool&) = delete;
    RowSpool& operator=(const RowSpool&) = delete;

    // False once a write has failed (a full disk): the spool is then of no use.
    bool Usable() const { return file_ != nullptr && !failed_; }
    bool Complete() const { return Usable() && complete_; }
    void MarkComplete() { complete_ = true; }
    const std::vector<ResultColumn>& Columns() const { return columns_; }

    void Write(const std::vector<Value>& row) {
        if (!Usable()) return;
        std::string& bytes = row_;
        bytes.assign(sizeof(std::uint64_t), '\0');  // the length, filled in below
        for (const Value& value : row) {
            if (const auto* integer = std::get_if<std::int64_t>(&value)) {
                Put(bytes, 'i', integer, sizeof *integer);
            } else if (const auto* real = std::get_if<double>(&value)) {
                Put(bytes, 'r', real, sizeof *real);
            } else if (const auto* text = std::get_if<std::string>(&value)) {
                const auto size = static_cast<std::uint64_t>(text->size());
                Put(bytes, 't', &size, sizeof size);
                bytes += *text;
            } else {
                Put(bytes, 'n', nullptr, 0);
            }
        }
        const auto length = static_cast<std::uint64_t>(bytes.size() - sizeof(std::uint64_t));
        std::memcpy(bytes.data(), &length, sizeof length);
        if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) failed_ = true;
    }

    // Hands the rows over again from the first, one at a time.
    class Reader final : public RowCursor {
    public:
        Reader(RowSpool& spool, std::shared_ptr<Connection> connection)
            : spool_(spool), connection_(std::move(connection)) {
            std::fflush(spool_.file_.get());
            std::rewind(spool_.file_.get());
            if (connection_) connection_->HoldReads();
        }
        ~Reader() override {
            if (connection_) connection_->ReleaseReads();
        }
        Reader(const Reader&) = delete;
        Reader& operator=(const Reader&) = delete;
        const std::vector<ResultColumn>& Columns() const override { return spool_.columns_; }
        bool Read(std::vector<Value>& row) override {
            std::FILE* file = spool_.file_.get();
            std::uint64_t length = 0;
            const std::size_t got = std::fread(&length, 1, sizeof length, file);
            if (got == 0 && std::feof(file)) return false;
            if (got != sizeof length) Unreadable();
            bytes_.resize(static_cast<std::size_t>(length));
            if (length != 0 && std::fread(bytes_.data(), 1, bytes_.size(), file) != bytes_.size()) Unreadable();
            at_ = 0;
            row.resize(spool_.columns_.size());
            for (Value& value : row) Next(value);
            return true;
        }

    private:
        // The next value into a slot of the row being read in; a text goes
        // into the slot's own text when it holds one.
        void Next(Value& slot) {
            char tag = 0;
            Take(&tag, 1);
            switch (tag) {
                case 'i': {
                    std::int64_t integer = 0;
                    Take(&integer, sizeof integer);
                    slot = integer;
                    return;
                }
                case 'r': {
                    double real = 0;
                    Take(&real, sizeof real);
                    slot = real;
                    return;
                }
                case 't': {
                    std::uint64_t size = 0;
                    Take(&size, sizeof size);
                    if (size > bytes_.size() - at_) Unreadable();
                    if (!std::holds_alternative<std::string>(slot)) slot = std::string();
                    std::get<std::string>(slot).assign(bytes_.data() + at_, static_cast<std::size_t>(size));
                    at_ += static_cast<std::size_t>(size);
                    return;
                }
                case 'n': slot = std::monostate{}; return;
                default: Unreadable();
            }
        }
        void Take(void* data, std::size_t size) {
            if (size > bytes_.size() - at_) Unreadable();
            std::memcpy(data, bytes_.data() + at_, size);
            at_ += size;
        }
        [[noreturn]] static void Unreadable() {
            throw DatabaseError("The rows kept in a temporary file to be read again cannot be read back.");
        }
        RowSpool& spool_;
        std::shared_ptr<Connection> connection_;  // held as one read while the rows are handed over
        std::string bytes_;  // the row being read in
        std::size_t at_ = 0;
    };

private:
    static void Put(std::string& bytes, char tag, const void* data, std::size_t size) {
        bytes += tag;
        bytes.append(static_cast<const char*>(data), size);
    }

    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::vector<ResultColumn> columns_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::string row_;  // the row being written out
    bool failed_ = false;
    bool complete_ = false;
};

}  // namespace

struct Query::State {
    std::vector<std::string> lines;
    Parameters parameters;

    bool active = false;
    bool forwardOnly = false;
    bool spooled = false;
    bool moved = false;  // forward only: Next() has left the first row
    ResultSet result;
    FieldIndex index;  // name -> its first column; kept from the last result until the next
    std::size_t row = 0;
    bool eof = true;
    std::shared_ptr<Connection> connection;
    // A spooled query: the rows of its last read, and whether the rows being
    // read now go to it (not when they come from it).
    std::unique_ptr<RowSpool> spool;
    bool spooling = false;
    // Forward only: the rows still to come (declared after the connection
    // and the spool, so that it goes first), and the row being read in.
    std::unique_ptr<RowCursor> cursor;
    std::vector<Value> incoming;
    std::string table;  // the one table of an editable result; "" otherwise
    // The text last run and the one table it reads, if it reads one.
    std::string sourceText;
    std::optional<std::string> sourceTable;

    bool editing = false;
    std::vector<Value> editRow;
    std::vector<bool> changed;

    const Value& ValueAt(std::size_t column) const {
        static const Value null;
        if (column >= result.columns.size()) return null;  // a field kept from an earlier result
        if (editing) return editRow[column];
        if (!active || result.rows.empty()) return null;
        return result.rows[row][column];
    }

    std::string Text() const {
        std::string text;
        for (std::size_t k = 0; k < lines.size(); ++k) {
            if (k) text += "\n";
            text += lines[k];
        }
        return text;
    }

    // The text that Open or ExecSQL runs; without one the query is refused,
    // naming its alias.
    std::string TextToRun(const std::string& alias, const char* kind) const {
        std::string text = Text();
        if (TrimSpace(text).empty()) {
            throw DatabaseError("The " + std::string(kind) + " on database alias \"" + alias +
                                "\" has no SQL text to run.");
        }
        return text;
    }

    // Forward only: the last row has been read; a spool being written now
    // holds every row.
    void RowsEnded() {
        cursor.reset();
        if (spooling) spool->MarkComplete();
        spooling = false;
    }

    // What a query read forward only cannot do.
    DatabaseError Refused(const std::string& alias, const std::string& what) const {
        return DatabaseError("The query on database alias \"" + alias +
                             "\" reads its rows forward only and keeps none behind: " + what + " (SQL: " + Quoted() + ")");
    }

    // The text for a message: the first line, shortened.
    std::string Quoted() const {
        std::string text = Text();
        const auto end = text.find('\n');
        if (end != std::string::npos) text = text.substr(0, end) + " ...";
        if (text.size() > 200) text = text.substr(0, 200) + " ...";
        return text;
    }
};

namespace {

Query::State& StateOf(std::unique_ptr<Query::State>& state) {
    if (!state) state = std::make_unique<Query::State>();  // a moved-from query starts again
    return *state;
}

}  // namespace

Query::Query(std::string alias) : alias_(std::move(alias)), state_(std::make_unique<State>()) {}
Query::~Query() = default;
Query::Query(Query&&) noexcept = default;
Query& Query::operator=(Query&&) noexcept = default;

void Query::ClearSQL() {
    Close();
    StateOf(state_).spool.reset();
    StateOf(state_).lines.clear();
}

void Query::SetSQL(const std::string& text) {
    Close();
    StateOf(state_).spool.reset();
    StateOf(state_).lines = {text};
}

void Query::AddSQL(const std::string& line) {
    Close();
    StateOf(state_).spool.reset();
    StateOf(state_).lines.push_back(line);
}

std::string Query::SQLText() const { return state_ ? state_->Text() : std::string(); }

void Query::SetParam(const std::string& name, Value value) {
    State& state = StateOf(state_);
    state.spool.reset();
    const std::string key = name.starts_with(":") ? name.substr(1) : name;
    for (auto& [existing, current] : state.parameters) {
        if (SameIgnoringCase(existing, key)) {
            current = std::move(value);
            return;
        }
    }
    state.parameters.emplace_back(key, std::move(value));
}

void Query::Open() {
    State& state = StateOf(state_);
    Close();
    const std::string text = state.TextToRun(alias_, "query");
    std::shared_ptr<Connection> connection = ConnectionRegistry::Get(alias_);
    if (state.forwardOnly) {
        state.spool.reset();
        std::unique_ptr<RowCursor> cursor = connection->SelectForward(text, state.parameters);
        if (state.spooled) {
            state.spool = std::make_unique<RowSpool>(cursor->Columns());
            state.spooling = true;
        }
        state.connection = std::move(connection);
        StartForward(state, std::move(cursor));
        return;
    }
    // The one table a text reads is found once for a text run again and
    // again (the section queries of each employee).
    if (text != state.sourceText) {
        state.sourceTable = SingleSourceTable(text);
        state.sourceText = text;
    }
    const std::optional<std::string>& table = state.sourceTable;
    ResultSet result = connection->Select(text, state.parameters, table.value_or(""));
    state.table = table && !result.rowKeys.empty() ? *table : "";
    state.result = std::move(result);
    state.index.Build(state.result.columns);
    state.connection = std::move(connection);
    state.active = true;
    state.row = 0;
    state.eof = state.result.rows.empty();
}

void Query::StartForward(State& state, std::unique_ptr<RowCursor> cursor) {
    state.result.columns = cursor->Columns();
    std::vector<Value> row;
    if (cursor->Read(row)) {
        if (state.spooling) state.spool->Write(row);
        state.result.rows.push_back(std::move(row));
        state.cursor = std::move(cursor);
    } else {
        state.RowsEnded();
    }
    state.index.Build(state.result.columns);
    state.active = true;
    state.moved = false;
    state.row = 0;
    state.eof = state.result.rows.empty();
}

bool Query::Reread() {
    State& state = StateOf(state_);
    if (!state.spool || !state.spool->Complete()) return false;
    Close();
    // The reader of the rows runs its look-ups for each of them as one read
    // of the database, until the last row or Close().
    StartForward(state, std::make_unique<RowSpool::Reader>(*state.spool, ConnectionRegistry::Get(alias_)));
    return true;
}

void Query::ExecSQL() {
    State& state = StateOf(state_);
    Close();
    const std::string text = state.TextToRun(alias_, "statement");
    ConnectionRegistry::Get(alias_)->Execute(text, state.parameters);
}

void Query::Close() {
    if (!state_) return;
    State& state = *state_;
    state.active = false;
    state.editing = false;
    state.cursor.reset();
    state.spooling = false;
    // A spool that does not hold every row is of no use.
    if (state.spool && !state.spool->Complete()) state.spool.reset();
    state.incoming.clear();
    state.moved = false;
    state.result = ResultSet{};
    state.row = 0;
    state.eof = true;
    state.connection.reset();
    state.table.clear();
}

bool Query::Active() const { return state_ && state_->active; }

void Query::SetForwardOnly(bool forwardOnly) { StateOf(state_).forwardOnly = forwardOnly; }

void Query::SetSpooled(bool spooled) {
    State& state = StateOf(state_);
    state.spooled = spooled;
    if (!spooled) state.spool.reset();
}

bool Query::ForwardOnly() const { return state_ && state_->forwardOnly; }

void Query::First() {
    State& state = StateOf(state_);
    if (state.editing) Post();
    if (state.active && state.forwardOnly && state.moved) {
        throw state.Refused(alias_, "it cannot go back to its first row; open it again to read the rows again.");
    }
    state.row = 0;
    state.eof = !state.active || state.result.rows.empty();
}

void Query::Next() {
    State& state = StateOf(state_);
    if (state.editing) Post();
    if (state.eof) return;
    if (state.forwardOnly) {
        state.moved = true;
        if (state.cursor && state.cursor->Read(state.incoming)) {
            state.result.rows.front().swap(state.incoming);
            if (state.spooling) state.spool->Write(state.result.rows.front());
        } else {
            state.RowsEnded();
            state.eof = true;  // stays on the last row
        }
        return;
    }
    if (state.row + 1 < state.result.rows.size()) {
        ++state.row;
    } else {
        state.eof = true;  // stays on the last row
    }
}

void Query::Last() {
    State& state = StateOf(state_);
    if (state.editing) Post();
    if (state.active && state.forwardOnly) throw state.Refused(alias_, "it cannot go to its last row.");
    const bool empty = !state.active || state.result.rows.empty();
    state.row = empty ? 0 : state.result.rows.size() - 1;
    state.eof = empty;
}

void Query::MoveTo(int row) {
    State& state = StateOf(state_);
    if (state.editing) Post();
    if (state.active && state.forwardOnly) {
        throw state.Refused(alias_, "it cannot go straight to row " + std::to_string(row) + ".");
    }
    if (!state.active || row < 0 || static_cast<std::size_t>(row) >= state.result.rows.size()) {
        Last();  // the payroll's cursor stays on the last row at the end
        state.eof = true;
        return;
    }
    state.row = static_cast<std::size_t>(row);
    state.eof = false;
}

bool Query::Eof() const { return !state_ || state_->eof; }

bool Query::IsEmpty() const { return !Active() || state_->result.rows.empty(); }

int Query::RecordCount() const {
    if (Active() && state_->forwardOnly) {
        throw state_->Refused(alias_, "the number of its rows is not known before they are read.");
    }
    return Active() ? static_cast<int>(state_->result.rows.size()) : 0;
}

bool Query::HasField(std::string_view name) const {
    return Active() && state_->index.Find(name) != FieldIndex::npos;
}

Field Query::FieldByName(std::string_view name) {
    State& state = StateOf(state_);
    if (!state.active) {
        throw DatabaseError("Field \"" + std::string(name) + "\" cannot be read: the query on database alias \"" + alias_ +
                            "\" is not open (SQL: " + state.Quoted() + ")");
    }
    const std::size_t found = state.index.Find(name);
    if (found == FieldIndex::npos) {
        throw DatabaseError("The query on database alias \"" + alias_ + "\" has no field \"" + std::string(name) +
                            "\" (SQL: " + state.Quoted() + ")");
    }
    return Field(this, found);
}

std::vector<std::string> Query::FieldNames() const {
    std::vector<std::string> names;
    if (!Active()) return names;
    for (const auto& column : state_->result.columns) names.push_back(column.name);
    return names;
}

void Query::Edit() {
    State& state = StateOf(state_);
    if (state.editing) return;
    if (!state.active) {
        throw DatabaseError("The query on database alias \"" + alias_ + "\" is not open, so it cannot be edited (SQL: " +
                            state.Quoted() + ")");
    }
    if (state.forwardOnly) throw state.Refused(alias_, "its rows cannot be edited.");
    if (state.table.empty()) {
        throw DatabaseError("The result of this query cannot be edited: it does not read the rows of one table (SQL: " +
                            state.Quoted() + ")");
    }
    if (state.result.rows.empty()) {
        throw DatabaseError("There is no row of table " + state.table + " to edit (SQL: " + state.Quoted() + ")");
    }
    state.editRow = state.result.rows[state.row];
    state.changed.assign(state.editRow.size(), false);
    state.editing = true;
}

void Query::Post() {
    State& state = StateOf(state_);
    if (!state.editing) {
        throw DatabaseError("Post without Edit: no row of the query is being edited (SQL: " + state.Quoted() + ")");
    }
    std::vector<std::pair<std::string, Value>> changes;
    for (std::size_t c = 0; c < state.changed.size(); ++c) {
        if (!state.changed[c]) continue;
        const ResultColumn& column = state.result.columns[c];
        if (column.origin.empty() || !SameIgnoringCase(column.table, state.table)) {
            throw DatabaseError("Field \"" + column.name + "\" is computed by the query and cannot be written to table " +
                                state.table + " (SQL: " + state.Quoted() + ")");
        }
        changes.emplace_back(column.origin, state.editRow[c]);
    }
    state.connection->UpdateRow(state.table, state.result.rowKeys[state.row], changes);
    state.result.rows[state.row] = std::move(state.editRow);
    state.editRow.clear();
    state.editing = false;
}

void Query::Cancel() {
    if (state_) {
        state_->editing = false;
        state_->editRow.clear();
    }
}

// --- Field ---------------------------------------------------------------

namespace {

const Value& ValueOf(const Query::State& state, std::size_t column) { return state.ValueAt(column); }

}  // namespace

std::string Field::AsString() const {
    const Value& value = query_->state_->ValueAt(column_);
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value)) return RealText(*real);
    return "";
}

double Field::AsFloat() const {
    const Value& value = ValueOf(*query_->state_, column_);
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    if (const auto* text = std::get_if<std::string>(&value)) return ParseReal(*text).value_or(0.0);
    return 0.0;
}

std::optional<double> Field::AsNumber() const {
    const Value& value = ValueOf(*query_->state_, column_);
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    if (const auto* text = std::get_if<std::string>(&value)) return ParseReal(*text);
    return std::nullopt;
}

std::int64_t Field::AsInteger() const {
    const Value& value = ValueOf(*query_->state_, column_);
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return *integer;
    if (const auto* real = std::get_if<double>(&value)) return RoundToInteger(*real);
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string trimmed = TrimSpace(*text);
        std::int64_t whole = 0;
        const auto result = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), whole);
        if (!trimmed.empty() && result.ec == std::errc() && result.ptr == trimmed.data() + trimmed.size()) {
            return whole;
        }
        return RoundToInteger(ParseReal(trimmed).value_or(0.0));
    }
    return 0;
}

Date Field::AsDate() const {
    const Value& value = ValueOf(*query_->state_, column_);
    if (const auto* text = std::get_if<std::string>(&value)) return Date::Parse(*text).value_or(Date::Empty());
    return Date::Empty();
}

bool Field::IsNull() const {
    return std::holds_alternative<std::monostate>(ValueOf(*query_->state_, column_));
}

const std::string& Field::Name() const {
    static const std::string none;
    const auto& columns = query_->state_->result.columns;
    return column_ < columns.size() ? columns[column_].name : none;
}

namespace {

void SetValue(Query::State& state, std::size_t column, Value value) {
    if (!state.editing) {
        throw DatabaseError("Field \"" + state.result.columns[column].name +
                            "\" can be changed only between Edit and Post (SQL: " + state.Quoted() + ")");
    }
    state.editRow[column] = std::move(value);
    state.changed[column] = true;
}

}  // namespace

void Field::SetAsString(const std::string& value) { SetValue(*query_->state_, column_, value); }
void Field::SetAsFloat(double value) { SetValue(*query_->state_, column_, value); }
void Field::SetAsInteger(std::int64_t value) { SetValue(*query_->state_, column_, value); }
void Field::SetNull() { SetValue(*query_->state_, column_, std::monostate{}); }

}  // namespace iras::db
