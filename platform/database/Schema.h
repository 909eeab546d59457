// Making a new payroll database: the year-end schema, the submission engine's
// own tables, the keyword codes and, when asked, the sample data, all from the
// SQL files of the data folder. Those files are compiled into the library, so
// a database can be made wherever the program runs.
//
// A database is only ever made where no file exists yet: an existing file is
// refused, so that no payroll data is overwritten. Either everything is
// created or nothing is left behind. On a PostgreSQL server the database
// itself is the server administrator's to create; the tables are made in it
// only while it holds no payroll tables, all in one transaction.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace iras::db {

// One SQL file of the data folder as it was when the library was built.
struct EmbeddedSqlFile {
    std::string_view name;  // file name, e.g. "schema.sql"
    std::string_view text;
};

// Every data/*.sql file, by name in alphabetical order (generated at build time).
std::span<const EmbeddedSqlFile> EmbeddedSqlFiles();

// The text of one embedded file; nothing when the data folder had no such file.
std::optional<std::string_view> EmbeddedSql(std::string_view name);

// A script to run when a database is made, and the name that errors give it.
struct NamedScript {
    std::string name;
    std::string text;
    bool native = false;  // written for the one engine and run untranslated
};

// The scripts that make a database, in order: "schema.sql", "engine_schema.sql"
// (the submission engine's tables, when the data folder has it), "keywords.sql"
// and, with sample data, "sample.sql"; after each of schema, keywords and
// sample the parts that a return brings of its own ("schema_a8b.sql",
// "keywords_ir8s.sql", "sample_a8a.sql"), by name. For PostgreSQL,
// "postgres_functions.sql" (the payroll's functions, run as written) comes first.
std::vector<NamedScript> DatabaseScripts(bool withSampleData, bool postgres = false);

// Makes a new SQLite database file at path from the scripts of
// DatabaseScripts. Throws DatabaseError naming the file when the file already
// exists, cannot be created, or a script fails (then naming the script too);
// in every failure no new file is left behind.
void CreateDatabase(const std::filesystem::path& path, bool withSampleData);

// The same with any scripts, run in one transaction.
void CreateDatabase(const std::filesystem::path& path, const std::vector<NamedScript>& scripts);

// Makes the payroll database a location names: a PostgreSQL connection URI
// (see IsPostgresUri) or else a new SQLite file. On a server, a database that
// already holds the table YEEmployer is refused, naming the server.
void CreateDatabase(const std::string& location, bool withSampleData);

}  // namespace iras::db
