// Token-level translation of the payroll server's SQL forms (see SqlDialect.h).
//
// The text is cut into tokens that keep every character, so that writing the
// tokens back gives the text again; the rewrites change the text of a few
// tokens and never look inside string literals, quoted names or comments.

#include "platform/database/SqlDialect.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/common/Text.h"

namespace iras::db {
namespace {

enum class Kind { Space, Comment, Literal, QuotedName, Number, Parameter, Name, Symbol };

struct Token {
    Kind kind;
    std::string text;
};

bool IsNameStart(unsigned char c) {
    return std::isalpha(c) || c == '_' || c >= 0x80;
}

bool IsNameChar(unsigned char c) {
    return std::isalnum(c) || c == '_' || c == '$' || c == '#' || c == '@' || c >= 0x80;
}

bool Is(const Token& token, std::string_view word) {
    return token.kind == Kind::Name && SameIgnoringCase(token.text, word);
}

bool IsSymbol(const Token& token, std::string_view symbol) {
    return token.kind == Kind::Symbol && token.text == symbol;
}

// Cuts the text into tokens. A quote left open runs to the end of the text;
// the engine reports it.
std::vector<Token> Tokenize(std::string_view sql) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    const std::size_t n = sql.size();
    auto at = [&](std::size_t k) -> unsigned char { return k < n ? static_cast<unsigned char>(sql[k]) : 0; };
    auto quoted = [&](char close) {
        std::size_t k = i + 1;
        while (k < n) {
            if (sql[k] == close) {
                if (close != ']' && at(k + 1) == static_cast<unsigned char>(close)) {
                    k += 2;  // a doubled quote stands for one
                    continue;
                }
                return k + 1;
            }
            ++k;
        }
        return n;
    };
    while (i < n) {
        const unsigned char c = at(i);
        std::size_t end = i + 1;
        Kind kind = Kind::Symbol;
        if (std::isspace(c)) {
            while (end < n && std::isspace(at(end))) ++end;
            kind = Kind::Space;
        } else if ((c == '-' && at(i + 1) == '-') || (c == '/' && at(i + 1) == '/')) {
            while (end < n && sql[end] != '\n') ++end;
            kind = Kind::Comment;
        } else if (c == '/' && at(i + 1) == '*') {
            const auto close = sql.find("*/", i + 2);
            end = close == std::string_view::npos ? n : close + 2;
            kind = Kind::Comment;
        } else if (c == '\'') {
            end = quoted('\'');
            kind = Kind::Literal;
        } else if (c == '"' || c == '`') {
            end = quoted(static_cast<char>(c));
            kind = Kind::QuotedName;
        } else if (c == '[') {
            end = quoted(']');
            kind = Kind::QuotedName;
        } else if (std::isdigit(c) || (c == '.' && std::isdigit(at(i + 1)))) {
            kind = Kind::Number;
            if (c == '0' && (at(i + 1) == 'x' || at(i + 1) == 'X') && std::isxdigit(at(i + 2))) {
                end = i + 2;
                while (std::isxdigit(at(end))) ++end;
            } else {
                while (std::isdigit(at(end))) ++end;
                if (at(end) == '.') {
                    ++end;
                    while (std::isdigit(at(end))) ++end;
                }
                if ((at(end) == 'e' || at(end) == 'E') &&
                    (std::isdigit(at(end + 1)) ||
                     ((at(end + 1) == '+' || at(end + 1) == '-') && std::isdigit(at(end + 2))))) {
                    end += 2;
                    while (std::isdigit(at(end))) ++end;
                }
            }
        } else if ((c == ':' || c == '@' || c == '$') && IsNameStart(at(i + 1))) {
            while (IsNameChar(at(end))) ++end;
            kind = Kind::Parameter;
        } else if (IsNameStart(c)) {
            while (IsNameChar(at(end))) ++end;
            kind = Kind::Name;
        } else {
            static constexpr std::string_view pairs[] = {"||", "<>", "<=", ">=", "!=", "==", "<<", ">>"};
            for (auto pair : pairs) {
                if (sql.substr(i, 2) == pair) {
                    end = i + 2;
                    break;
                }
            }
        }
        Token token{kind, std::string(sql.substr(i, end - i))};
        if (kind == Kind::Comment && token.text.starts_with("//")) {
            token.text.replace(0, 2, "--");  // SQLite knows only "--" line comments
        }
        // "10000ORDER": the server reads a number and a keyword, SQLite an error.
        if (!tokens.empty() && tokens.back().kind == Kind::Number &&
            (kind == Kind::Name || kind == Kind::Number)) {
            tokens.push_back({Kind::Space, " "});
        }
        tokens.push_back(std::move(token));
        i = end;
    }
    return tokens;
}

bool IsBlank(const Token& token) {
    return token.kind == Kind::Space || token.kind == Kind::Comment || token.text.empty();
}

// Index of the next (or previous) token that is not blank; npos when none.
constexpr std::size_t None = static_cast<std::size_t>(-1);

std::size_t NextSolid(const std::vector<Token>& tokens, std::size_t from, std::size_t end) {
    for (std::size_t k = from; k < end; ++k) {
        if (!IsBlank(tokens[k])) return k;
    }
    return None;
}

std::size_t PreviousSolid(const std::vector<Token>& tokens, std::size_t before, std::size_t begin) {
    for (std::size_t k = before; k > begin; --k) {
        if (!IsBlank(tokens[k - 1])) return k - 1;
    }
    return None;
}

// IF c THEN a ELSE b ENDIF -> CASE WHEN c THEN a ELSE b END. An IF without an
// ENDIF (CREATE TABLE IF NOT EXISTS) is not an expression and stays.
void RewriteConditionals(std::vector<Token>& tokens) {
    std::vector<std::size_t> open;
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        if (Is(tokens[k], "IF")) {
            open.push_back(k);
        } else if (Is(tokens[k], "ENDIF") && !open.empty()) {
            tokens[open.back()].text = "CASE WHEN";
            tokens[k].text = "END";
            open.pop_back();
        } else if (Is(tokens[k], "END") && !open.empty()) {
            const std::size_t next = NextSolid(tokens, k + 1, tokens.size());
            if (next != None && Is(tokens[next], "IF")) {
                tokens[open.back()].text = "CASE WHEN";
                tokens[next].text.clear();
                open.pop_back();
                k = next;
            }
        }
    }
}

// Index of the ")" that closes the "(" at open; npos when it is not closed.
std::size_t Closing(const std::vector<Token>& tokens, std::size_t open) {
    int depth = 0;
    for (std::size_t k = open; k < tokens.size(); ++k) {
        if (IsSymbol(tokens[k], "(")) {
            ++depth;
        } else if (IsSymbol(tokens[k], ")") && --depth == 0) {
            return k;
        }
    }
    return None;
}

// CAST(x AS Money) -> IRAS_MONEY(x): SQLite has no money type, and its CAST
// would not round to the four decimals of one.
void RewriteMoneyCasts(std::vector<Token>& tokens) {
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        if (!Is(tokens[k], "CAST")) continue;
        const std::size_t open = NextSolid(tokens, k + 1, tokens.size());
        if (open == None || !IsSymbol(tokens[open], "(")) continue;
        const std::size_t close = Closing(tokens, open);
        if (close == None) continue;
        const std::size_t type = PreviousSolid(tokens, close, open);
        if (type == None || !Is(tokens[type], "MONEY")) continue;
        const std::size_t as = PreviousSolid(tokens, type, open);
        if (as == None || !Is(tokens[as], "AS")) continue;
        tokens[k].text = "IRAS_MONEY";
        for (std::size_t j = as; j <= type; ++j) {
            tokens[j].text.clear();
        }
        // A blank left before the removed "AS" would only look odd in messages.
        if (as > open + 1 && tokens[as - 1].kind == Kind::Space) {
            tokens[as - 1].text.clear();
        }
    }
}

std::string Join(const std::vector<Token>& tokens, std::size_t begin, std::size_t end) {
    std::string text;
    for (std::size_t k = begin; k < end; ++k) text += tokens[k].text;
    return text;
}

bool EndsSelectList(const Token& token) {
    static constexpr std::string_view words[] = {"FROM", "WHERE", "GROUP", "HAVING", "ORDER",
                                                 "LIMIT", "UNION", "INTERSECT", "EXCEPT",
                                                 "WINDOW", "INTO"};
    if (IsSymbol(token, ";")) return true;
    return std::any_of(std::begin(words), std::end(words),
                       [&](std::string_view w) { return Is(token, w); });
}

// Select-list aliases known at a point of the text: lower-case name to the
// expression that defines it, already rewritten.
using Aliases = std::map<std::string, std::string>;

class AliasRewriter {
public:
    explicit AliasRewriter(const std::vector<Token>& tokens) : tokens_(tokens) {}

    std::string Render(std::size_t begin, std::size_t end, const Aliases& aliases) {
        std::string text;
        std::size_t k = begin;
        while (k < end) {
            const Token& token = tokens_[k];
            if (Is(token, "SELECT")) {
                k = RenderSelect(k, end, aliases, text);
                continue;
            }
            if (token.kind == Kind::Name && !aliases.empty() && Replaceable(k, begin, end)) {
                const auto found = aliases.find(AsciiLower(token.text));
                if (found != aliases.end()) {
                    text += "(" + found->second + ")";
                    ++k;
                    continue;
                }
            }
            text += token.text;
            ++k;
        }
        return text;
    }

private:
    // A bare name: not "A.X" nor the "A" of it, not a function, not the name
    // after AS (an alias being defined, or the type of a CAST).
    bool Replaceable(std::size_t k, std::size_t begin, std::size_t end) const {
        const std::size_t before = PreviousSolid(tokens_, k, begin);
        if (before != None && (IsSymbol(tokens_[before], ".") || Is(tokens_[before], "AS"))) {
            return false;
        }
        const std::size_t after = NextSolid(tokens_, k + 1, end);
        return after == None || !(IsSymbol(tokens_[after], ".") || IsSymbol(tokens_[after], "("));
    }

    // Writes the SELECT at k and its select list; returns where the list ends
    // (FROM, WHERE, ..., or the ")" that closes a subquery). The rest of the
    // statement is written by the caller: SQLite resolves select-list aliases
    // in WHERE and ORDER BY itself.
    std::size_t RenderSelect(std::size_t k, std::size_t end, const Aliases& outer, std::string& text) {
        text += tokens_[k].text;
        Aliases aliases = outer;
        std::size_t itemBegin = k + 1;
        // DISTINCT belongs to the select, not to the first item's expression.
        const std::size_t first = NextSolid(tokens_, k + 1, end);
        if (first != None && (Is(tokens_[first], "DISTINCT") || Is(tokens_[first], "ALL"))) {
            text += Join(tokens_, k + 1, first + 1);
            itemBegin = first + 1;
        }
        int depth = 0;
        std::size_t j = itemBegin;
        for (; j < end; ++j) {
            const Token& token = tokens_[j];
            if (IsSymbol(token, "(")) {
                ++depth;
            } else if (IsSymbol(token, ")")) {
                if (depth == 0) break;
                --depth;
            } else if (depth == 0 && IsSymbol(token, ",")) {
                text += RenderItem(itemBegin, j, aliases) + ",";
                itemBegin = j + 1;
            } else if (depth == 0 && EndsSelectList(token)) {
                break;
            }
        }
        text += RenderItem(itemBegin, j, aliases);
        return j;
    }

    // One item of a select list; an "expr AS name" item adds name to aliases
    // for the items after it.
    std::string RenderItem(std::size_t begin, std::size_t end, Aliases& aliases) {
        const std::size_t last = PreviousSolid(tokens_, end, begin);
        std::size_t as = None;
        if (last != None && (tokens_[last].kind == Kind::Name || tokens_[last].kind == Kind::QuotedName)) {
            const std::size_t before = PreviousSolid(tokens_, last, begin);
            if (before != None && Is(tokens_[before], "AS")) as = before;
        }
        if (as != None) {
            const std::string expression = Render(begin, as, aliases);
            std::string name = tokens_[last].text;
            if (tokens_[last].kind == Kind::QuotedName) name = name.substr(1, name.size() - 2);
            aliases[AsciiLower(name)] = TrimSpace(expression);
            return expression + Join(tokens_, as, end);
        }
        const std::string original = Join(tokens_, begin, end);
        std::string rendered = Render(begin, end, aliases);
        if (rendered != original) {
            // Keep the column name that the item would have had unrewritten.
            std::string name = TrimSpace(original);
            std::string quoted = "\"";
            for (char c : name) quoted += (c == '"') ? std::string("\"\"") : std::string(1, c);
            const auto trailing = rendered.find_last_not_of(" \t\r\n");
            rendered.insert(trailing == std::string::npos ? rendered.size() : trailing + 1,
                            " AS " + quoted + "\"");
        }
        return rendered;
    }

    const std::vector<Token>& tokens_;
};

// Index of the first SELECT outside parentheses; npos when none.
std::size_t OuterSelect(const std::vector<Token>& tokens) {
    int depth = 0;
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        if (IsSymbol(tokens[k], "(")) ++depth;
        else if (IsSymbol(tokens[k], ")")) --depth;
        else if (depth == 0 && Is(tokens[k], "SELECT")) return k;
    }
    return None;
}

// --- PostgreSQL ----------------------------------------------------------

// The server cuts names at 63 bytes; a longer one is cut to 50 and given 12
// hex digits of a hash of the whole (lower-case) name.
constexpr std::size_t PostgresNameLimit = 63;

std::string PostgresName(std::string_view name) {
    std::string lower = AsciiLower(std::string(name));
    if (lower.size() <= PostgresNameLimit) return lower;
    std::uint64_t hash = 14695981039346656037ull;  // FNV-1a
    for (unsigned char c : lower) {
        hash ^= c;
        hash *= 1099511628211ull;
    }
    static const char hex[] = "0123456789abcdef";
    std::string suffix = "_";
    for (int shift = 44; shift >= 0; shift -= 4) suffix += hex[(hash >> shift) & 0xF];
    return lower.substr(0, PostgresNameLimit - suffix.size()) + suffix;
}

std::string QuotedPostgresName(std::string_view name) { return QuoteName(PostgresName(name)); }

std::string UnquotedName(const Token& token) {
    if (token.kind != Kind::QuotedName || token.text.size() < 2) return token.text;
    std::string inner = token.text.substr(1, token.text.size() >= 2 ? token.text.size() - 2 : 0);
    const char quote = token.text.front();
    if (quote == '[') return inner;
    std::string single;
    for (std::size_t k = 0; k < inner.size(); ++k) {
        single += inner[k];
        if (inner[k] == quote && k + 1 < inner.size() && inner[k + 1] == quote) ++k;
    }
    return single;
}

// text between two quotes, a quote inside it doubled.
std::string Enclosed(std::string_view text, char quote) {
    std::string enclosed(1, quote);
    for (char c : text) {
        enclosed += c;
        if (c == quote) enclosed += quote;
    }
    return enclosed + quote;
}

std::string SqlLiteral(std::string_view text) { return Enclosed(text, '\''); }

// SQLite's "PRAGMA table_info(t)": one row per column of t, in order, with its
// type as a CREATE TABLE would write it again (collation included) and its
// place in the primary key (0 outside it).
std::string TableInfoQuery(const std::string& table) {
    return "SELECT CAST(a.attnum - 1 AS bigint) AS cid, CAST(a.attname AS text) AS name, "
           "format_type(a.atttypid, a.atttypmod) || CASE WHEN a.attcollation <> 0 AND a.attcollation <> "
           "t.typcollation THEN ' COLLATE ' || quote_ident(CAST(c.collname AS text)) ELSE '' END AS type, "
           "CASE WHEN a.attnotnull THEN 1 ELSE 0 END AS notnull, pg_get_expr(d.adbin, d.adrelid) AS dflt_value, "
           "COALESCE((SELECT array_position(CAST(i.indkey AS int2[]), a.attnum) + 1 - "
           "array_lower(CAST(i.indkey AS int2[]), 1) FROM pg_index i "
           "WHERE i.indrelid = a.attrelid AND i.indisprimary), 0) AS pk "
           "FROM pg_attribute a JOIN pg_type t ON t.oid = a.atttypid "
           "LEFT JOIN pg_collation c ON c.oid = a.attcollation "
           "LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum "
           "WHERE a.attrelid = to_regclass(" + SqlLiteral(QuoteName(PostgresName(table))) +
           ") AND a.attnum > 0 AND NOT a.attisdropped ORDER BY a.attnum";
}

void RewritePragma(std::vector<Token>& tokens) {
    const std::size_t pragma = NextSolid(tokens, 0, tokens.size());
    if (pragma == None || !Is(tokens[pragma], "PRAGMA")) return;
    const std::size_t what = NextSolid(tokens, pragma + 1, tokens.size());
    if (what == None || !Is(tokens[what], "table_info")) return;
    const std::size_t open = NextSolid(tokens, what + 1, tokens.size());
    if (open == None || !IsSymbol(tokens[open], "(")) return;
    const std::size_t name = NextSolid(tokens, open + 1, tokens.size());
    if (name == None) return;
    const std::size_t close = NextSolid(tokens, name + 1, tokens.size());
    if (close == None || !IsSymbol(tokens[close], ")")) return;
    std::string table = UnquotedName(tokens[name]);
    if (tokens[name].kind == Kind::Literal) table = table.substr(1, table.size() - 2);
    tokens[pragma] = Token{Kind::Symbol, TableInfoQuery(table)};
    for (std::size_t k = pragma + 1; k <= close; ++k) tokens[k] = Token{Kind::Space, ""};
}

bool IsCreateTable(const std::vector<Token>& tokens, std::size_t begin, std::size_t end, std::size_t* columnsOpen) {
    std::size_t k = NextSolid(tokens, begin, end);
    if (k == None || !Is(tokens[k], "CREATE")) return false;
    k = NextSolid(tokens, k + 1, end);
    while (k != None && (Is(tokens[k], "TEMP") || Is(tokens[k], "TEMPORARY") || Is(tokens[k], "UNLOGGED"))) {
        k = NextSolid(tokens, k + 1, end);
    }
    if (k == None || !Is(tokens[k], "TABLE")) return false;
    for (k = NextSolid(tokens, k + 1, end); k != None; k = NextSolid(tokens, k + 1, end)) {
        if (IsSymbol(tokens[k], "(")) {
            *columnsOpen = k;
            return true;
        }
        if (Is(tokens[k], "AS")) return false;  // CREATE TABLE ... AS SELECT
    }
    return false;
}

// The column types of a CREATE TABLE: REAL money as the exact money_amount,
// TEXT compared byte by byte.
void RewriteColumnTypes(std::vector<Token>& tokens, std::size_t open) {
    const std::size_t close = Closing(tokens, open);
    const std::size_t end = close == None ? tokens.size() : close;
    int depth = 0;
    for (std::size_t k = open + 1; k < end; ++k) {
        if (IsSymbol(tokens[k], "(")) ++depth;
        if (IsSymbol(tokens[k], ")")) --depth;
        if (depth != 0 || tokens[k].kind != Kind::Name) continue;
        const std::size_t name = PreviousSolid(tokens, k, open);
        if (name == None || (tokens[name].kind != Kind::Name && tokens[name].kind != Kind::QuotedName)) continue;
        const std::size_t before = PreviousSolid(tokens, name, open - 1);
        if (before == None || !(before == open || IsSymbol(tokens[before], ","))) continue;
        if (Is(tokens[k], "REAL")) {
            tokens[k].text = "money_amount";
        } else if (Is(tokens[k], "TEXT")) {
            // Unless the column names its own collation.
            bool collated = false;
            int inner = 0;
            for (std::size_t j = k + 1; j < end && !collated; ++j) {
                if (IsSymbol(tokens[j], "(")) ++inner;
                if (IsSymbol(tokens[j], ")")) --inner;
                if (inner == 0 && IsSymbol(tokens[j], ",")) break;
                collated = Is(tokens[j], "COLLATE");
            }
            if (!collated) tokens[k].text = "TEXT COLLATE \"C\"";
        }
    }
}

bool EndsFromItem(const Token& token) {
    static constexpr std::string_view words[] = {
        "WHERE", "UNION", "EXCEPT", "INTERSECT", "ORDER", "GROUP", "HAVING", "LIMIT", "OFFSET", "JOIN",
        "LEFT", "RIGHT", "INNER", "CROSS", "FULL", "NATURAL", "ON", "USING", "WINDOW", "FETCH", "FOR"};
    if (token.kind != Kind::Name) return true;
    return std::any_of(std::begin(words), std::end(words), [&](std::string_view w) { return Is(token, w); });
}

bool EndsOrderBy(const Token& token) {
    static constexpr std::string_view words[] = {"LIMIT", "OFFSET", "UNION", "EXCEPT", "INTERSECT", "FETCH", "FOR"};
    if (IsSymbol(token, ";")) return true;
    return std::any_of(std::begin(words), std::end(words), [&](std::string_view w) { return Is(token, w); });
}

// SQLite sorts NULL before every value, PostgreSQL after: each ORDER BY item
// says where NULL goes, unless it says so itself.
void RewriteNullOrder(std::vector<Token>& tokens) {
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        if (!Is(tokens[k], "ORDER")) continue;
        const std::size_t by = NextSolid(tokens, k + 1, tokens.size());
        if (by == None || !Is(tokens[by], "BY")) continue;
        int depth = 0;
        std::size_t itemBegin = by + 1;
        auto finish = [&](std::size_t end) {
            const std::size_t last = PreviousSolid(tokens, end, itemBegin - 1);
            if (last == None || last < itemBegin) return;
            bool placed = false;
            for (std::size_t j = itemBegin; j <= last; ++j) placed = placed || Is(tokens[j], "NULLS");
            if (!placed) tokens[last].text += Is(tokens[last], "DESC") ? " NULLS LAST" : " NULLS FIRST";
        };
        std::size_t j = by + 1;
        for (; j < tokens.size(); ++j) {
            if (IsSymbol(tokens[j], "(")) ++depth;
            if (IsSymbol(tokens[j], ")") && --depth < 0) break;
            if (depth != 0) continue;
            if (EndsOrderBy(tokens[j])) break;
            if (IsSymbol(tokens[j], ",")) {
                finish(j);
                itemBegin = j + 1;
            }
        }
        finish(j);
        k = j == tokens.size() ? j : j - 1;
    }
}

void RewriteForPostgres(std::vector<Token>& tokens, std::vector<std::string>& parameters) {
    RewritePragma(tokens);
    RewriteNullOrder(tokens);
    std::size_t columnsOpen = None;
    if (IsCreateTable(tokens, 0, tokens.size(), &columnsOpen)) RewriteColumnTypes(tokens, columnsOpen);
    int subqueries = 0;
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        Token& token = tokens[k];
        if (token.kind == Kind::Parameter) {
            const std::string name = AsciiLower(token.text.substr(1));
            auto found = std::find(parameters.begin(), parameters.end(), name);
            if (found == parameters.end()) found = parameters.insert(parameters.end(), name);
            token.text = "$" + std::to_string(found - parameters.begin() + 1);
            continue;
        }
        if (token.kind == Kind::QuotedName) {
            const std::size_t before = PreviousSolid(tokens, k, 0);
            if (before == None || !Is(tokens[before], "COLLATE")) token.text = QuotedPostgresName(UnquotedName(token));
            continue;
        }
        if (IsSymbol(token, "(")) {
            // PostgreSQL 15 wants a name for every subquery of a FROM clause.
            const std::size_t before = PreviousSolid(tokens, k, 0);
            const std::size_t first = NextSolid(tokens, k + 1, tokens.size());
            const std::size_t close = Closing(tokens, k);
            if (before != None && (Is(tokens[before], "FROM") || Is(tokens[before], "JOIN")) && first != None &&
                (Is(tokens[first], "SELECT") || Is(tokens[first], "VALUES") || Is(tokens[first], "WITH")) &&
                close != None) {
                const std::size_t after = NextSolid(tokens, close + 1, tokens.size());
                if (after == None || (EndsFromItem(tokens[after]) && !Is(tokens[after], "AS"))) {
                    tokens[close].text += " AS iras_subquery_" + std::to_string(++subqueries);
                }
            }
            continue;
        }
        if (token.kind != Kind::Name) continue;
        if (token.text.size() > PostgresNameLimit) {
            token.text = PostgresName(token.text);
            continue;
        }
        const std::size_t next = NextSolid(tokens, k + 1, tokens.size());
        const bool call = next != None && IsSymbol(tokens[next], "(");
        const std::size_t before = PreviousSolid(tokens, k, 0);
        if (before != None && IsSymbol(tokens[before], ".")) continue;  // a column of a table
        if (call && Is(token, "ROUND")) {
            token.text = "IRAS_ROUND";
        } else if (call && Is(token, "DATE")) {
            token.text = "IRAS_DATE";
        } else if (call && (Is(token, "MIN") || Is(token, "MAX"))) {
            // min(a, b) of SQLite is a value of a row, not an aggregate.
            const std::size_t close = Closing(tokens, next);
            int depth = 0;
            for (std::size_t j = next; close != None && j < close; ++j) {
                if (IsSymbol(tokens[j], "(")) ++depth;
                if (IsSymbol(tokens[j], ")")) --depth;
                if (depth == 1 && IsSymbol(tokens[j], ",")) {
                    token.text = Is(token, "MIN") ? "LEAST" : "GREATEST";
                    break;
                }
            }
        } else if (!call && Is(token, "INTEGER")) {
            const std::size_t primary = next;
            const std::size_t key = primary == None ? None : NextSolid(tokens, primary + 1, tokens.size());
            if (key != None && Is(tokens[primary], "PRIMARY") && Is(tokens[key], "KEY")) {
                token.text = "BIGINT GENERATED BY DEFAULT AS IDENTITY";  // SQLite's row id column
            } else {
                token.text = "BIGINT";
            }
        } else if (!call && Is(token, "REAL")) {
            token.text = "DOUBLE PRECISION";
        }
    }
}

// An aggregate function called at k: its rows are no rows of the table.
bool IsAggregate(const std::vector<Token>& tokens, std::size_t k) {
    static constexpr std::string_view names[] = {"COUNT", "SUM", "TOTAL", "AVG", "MIN", "MAX", "GROUP_CONCAT",
                                                 "STRING_AGG"};
    if (tokens[k].kind != Kind::Name) return false;
    const std::size_t next = NextSolid(tokens, k + 1, tokens.size());
    if (next == None || !IsSymbol(tokens[next], "(")) return false;
    return std::any_of(std::begin(names), std::end(names), [&](std::string_view n) { return Is(tokens[k], n); });
}

}  // namespace

std::string TranslateForSqlite(std::string_view sql) {
    std::vector<Token> tokens = Tokenize(sql);
    RewriteConditionals(tokens);
    RewriteMoneyCasts(tokens);
    AliasRewriter aliases(tokens);
    return aliases.Render(0, tokens.size(), Aliases{});
}

PostgresStatement TranslateForPostgres(std::string_view sql) {
    std::vector<Token> tokens = Tokenize(sql);
    RewriteConditionals(tokens);
    RewriteMoneyCasts(tokens);
    PostgresStatement statement;
    RewriteForPostgres(tokens, statement.parameters);
    AliasRewriter aliases(tokens);
    statement.text = aliases.Render(0, tokens.size(), Aliases{});
    return statement;
}

std::vector<std::string> SplitStatements(std::string_view script) {
    const std::vector<Token> tokens = Tokenize(script);
    std::vector<std::string> statements;
    std::string current;
    bool solid = false;
    int depth = 0;
    for (const Token& token : tokens) {
        if (IsSymbol(token, "(")) ++depth;
        if (IsSymbol(token, ")")) --depth;
        if (depth <= 0 && IsSymbol(token, ";")) {
            if (solid) statements.push_back(std::move(current));
            current.clear();
            solid = false;
            depth = 0;
            continue;
        }
        if (!IsBlank(token)) solid = true;
        current += token.text;
    }
    if (solid) statements.push_back(std::move(current));
    return statements;
}

std::optional<std::string> SingleSourceTable(std::string_view sql) {
    const std::vector<Token> tokens = Tokenize(sql);
    const std::size_t select = OuterSelect(tokens);
    if (select == None || NextSolid(tokens, 0, tokens.size()) != select) return std::nullopt;
    int depth = 0;
    std::size_t from = None;
    bool inFromList = false;
    for (std::size_t k = select + 1; k < tokens.size(); ++k) {
        const Token& token = tokens[k];
        if (IsSymbol(token, "(")) ++depth;
        else if (IsSymbol(token, ")")) --depth;
        else if (depth == 0 && from == None && IsAggregate(tokens, k)) return std::nullopt;  // one row of many
        else if (depth == 0 && (Is(token, "DISTINCT") || Is(token, "GROUP") || Is(token, "UNION") ||
                                Is(token, "INTERSECT") || Is(token, "EXCEPT") || Is(token, "JOIN") ||
                                Is(token, "HAVING"))) {
            return std::nullopt;
        } else if (depth == 0 && from == None && Is(token, "FROM")) {
            from = k;
            inFromList = true;
        } else if (depth == 0 && inFromList && IsSymbol(token, ",")) {
            return std::nullopt;  // FROM a, b
        } else if (depth == 0 && (Is(token, "WHERE") || Is(token, "ORDER") || Is(token, "LIMIT"))) {
            inFromList = false;
        }
    }
    if (from == None) return std::nullopt;
    const std::size_t table = NextSolid(tokens, from + 1, tokens.size());
    if (table == None) return std::nullopt;
    if (tokens[table].kind == Kind::Name) return tokens[table].text;
    if (tokens[table].kind == Kind::QuotedName) {
        const std::string& text = tokens[table].text;
        return text.substr(1, text.size() - 2);
    }
    return std::nullopt;  // a subquery or something stranger
}

std::string WithTrailingColumn(std::string_view sql, std::string_view column) {
    std::vector<Token> tokens = Tokenize(sql);
    const std::size_t select = OuterSelect(tokens);
    if (select == None) return std::string(sql);
    int depth = 0;
    for (std::size_t k = select + 1; k < tokens.size(); ++k) {
        if (IsSymbol(tokens[k], "(")) {
            ++depth;
        } else if (IsSymbol(tokens[k], ")")) {
            --depth;
        } else if (depth == 0 && Is(tokens[k], "FROM")) {
            tokens[k].text = ", " + std::string(column) + " " + tokens[k].text;
            return Join(tokens, 0, tokens.size());
        }
    }
    return std::string(sql);
}

bool ScriptControlsTransactions(std::string_view script) {
    const std::vector<Token> tokens = Tokenize(script);
    bool statementStart = true;
    int depth = 0;
    for (const Token& token : tokens) {
        if (IsBlank(token)) continue;
        if (statementStart && (Is(token, "BEGIN") || Is(token, "COMMIT") || Is(token, "ROLLBACK") ||
                               Is(token, "VACUUM") || Is(token, "SAVEPOINT") || Is(token, "RELEASE"))) {
            return true;
        }
        if (IsSymbol(token, "(")) ++depth;
        if (IsSymbol(token, ")")) --depth;
        statementStart = depth == 0 && IsSymbol(token, ";");
    }
    return false;
}

std::string QuoteName(std::string_view name) { return Enclosed(name, '"'); }

}  // namespace iras::db
