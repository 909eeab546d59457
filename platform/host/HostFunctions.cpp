// The host's common functions that concern the session: who may use which
// module, what the session's per-user tables are called, what day the database
// server thinks it is, and where the host keeps its reports.
#include "platform/host/HostFunctions.h"

#include <chrono>
#include <cstdlib>
#include <mutex>
#include <optional>

#include "platform/database/Query.h"

namespace iras {

namespace {

std::mutex& RootMutex() {
    static std::mutex mutex;
    return mutex;
}

std::optional<std::filesystem::path>& ConfiguredRoot() {
    static std::optional<std::filesystem::path> root;
    return root;
}

// Letters a-z and digits stay as they are; every other byte (capitals, blanks,
// quotes, the bytes of a non-ASCII character) becomes "_" and two upper-case
// hex digits. Capitals are escaped because SQL identifiers ignore case: "ALICE"
// and "alice" are two users and must get two tables. As "_" itself is always
// escaped, "_" in the result always starts an escape, so the text decodes back
// to the one id it came from, also after the database folds its case.
std::string EncodeForIdentifier(const std::string& text) {
    static const char hex[] = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(text.size() * 2);
    for (unsigned char c : text) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            encoded += static_cast<char>(c);
        } else {
            encoded += '_';
            encoded += hex[c >> 4];
            encoded += hex[c & 0x0F];
        }
    }
    return encoded;
}

long long SecondsOf(const DateTime& moment) {
    using namespace std::chrono;
    const sys_days day = year{moment.date.year} / month{static_cast<unsigned>(moment.date.month)} /
                         std::chrono::day{static_cast<unsigned>(moment.date.day)};
    return day.time_since_epoch().count() * 86400LL + moment.hour * 3600LL + moment.minute * 60LL +
           moment.second;
}

// Now() is the test clock while SetClockForTesting holds one; a fixed clock
// shows itself by differing from the real one.
bool ClockIsFixedForTesting() {
    const long long difference = SecondsOf(Now()) - SecondsOf(SystemNow());
    return difference > 2 || difference < -2;
}

}  // namespace

int _IsUserModuleAccessible(const std::string& userId, const std::string& moduleId, int, int) {
    // A right that cannot be read is a right not held: the database being
    // unreachable must never open a module.
    try {
        db::Query query("kovadb");
        query.SetSQL(
            "SELECT COUNT(*) AS Granted FROM UserModuleRights WHERE UserId = :UserId AND ModuleId = :ModuleId");
        query.SetParam("UserId", userId);
        query.SetParam("ModuleId", moduleId);
        query.Open();
        return query.FieldByName("Granted").AsInteger() > 0 ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

std::string _GetViewTableName(const std::string& baseName, const std::string& ipAddress,
                              const std::string& userId) {
    // "__" never occurs inside an encoded id, so it separates user and
    // address unambiguously.
    return baseName + "_" + EncodeForIdentifier(userId) + "__" + EncodeForIdentifier(ipAddress);
}

Date _GetDBServerCurrentDate() {
    if (ClockIsFixedForTesting()) return Now().date;
    try {
        db::Query query("kovadb");
        query.SetSQL("SELECT date('now','localtime') AS Today");
        query.Open();
        if (auto today = Date::Parse(query.FieldByName("Today").AsString())) return *today;
    } catch (const db::DatabaseError&) {
        // Without a server to ask, the workstation's date is the best we have;
        // the queries of the run report the database failure themselves.
    }
    return Now().date;
}

void SetHRPCurrentDirectory(const std::filesystem::path& root) {
    std::lock_guard lock(RootMutex());
    if (root.empty()) {
        ConfiguredRoot().reset();
    } else {
        ConfiguredRoot() = root;
    }
}

std::filesystem::path _GetHRPCurrentDirectory(const std::string& subFolder) {
    std::filesystem::path root;
    {
        std::lock_guard lock(RootMutex());
        if (ConfiguredRoot()) root = *ConfiguredRoot();
    }
    if (root.empty()) {
        if (const char* home = std::getenv("IRAS_YEAREND_HOME"); home && *home) {
            root = home;
        } else if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data) {
            root = std::filesystem::path(data) / "iras-yearend";
        } else if (const char* userHome = std::getenv("HOME"); userHome && *userHome) {
            root = std::filesystem::path(userHome) / ".local" / "share" / "iras-yearend";
        } else {
            root = std::filesystem::current_path() / "iras-yearend";
        }
    }
    std::filesystem::path folder = subFolder.empty() ? root : root / subFolder;
    // A folder that cannot be made shows up when the caller writes into it,
    // with the path in that message; this function stays a plain lookup.
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

}  // namespace iras
