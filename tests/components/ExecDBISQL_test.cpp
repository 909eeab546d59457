// The script runner component: the command line it builds, when it runs, its
// place on the palette, and real runs of the shipped dbisql, started detached.

#include "components/ExecDBISQL.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <future>
#include <stdexcept>

#include "components/ComponentRegistry.h"
#include "tests/components/ComponentsTestSupport.h"

namespace iras::testing {
namespace {

using Words = std::vector<std::string>;

// A component that records the words it would start the tool with.
struct Recorded {
    TExecDBISQL component;
    std::vector<Words> starts;
    Recorded() {
        component.SetProcessStarter([this](const Words& words) {
            starts.push_back(words);
            return std::string();
        });
    }
};

TEST(TExecDBISQL, BuildsTheToolsCommandLineFromItsProperties) {
    const struct {
        const char* programDir;
        const char* userId;
        const char* password;
        const char* dataSource;
        const char* script;
        const char* commandLine;
        Words words;
    } cases[] = {
        {"/opt/kova", "ADMIN", "secret", "/data/pay.db", "/data/load.sql",
         "/opt/kova/dbisql -c \"uid=ADMIN;pwd=secret;dsn=/data/pay.db\" -q /data/load.sql",
         {"/opt/kova/dbisql", "-c", "uid=ADMIN;pwd=secret;dsn=/data/pay.db", "-q", "/data/load.sql"}},
        // The script path is not quoted: blanks split it.
        {"/opt/kova", "ADMIN", "secret", "/data/pay.db", "/data/year end/load.sql",
         "/opt/kova/dbisql -c \"uid=ADMIN;pwd=secret;dsn=/data/pay.db\" -q /data/year end/load.sql",
         {"/opt/kova/dbisql", "-c", "uid=ADMIN;pwd=secret;dsn=/data/pay.db", "-q", "/data/year", "end/load.sql"}},
        // ... unless the caller quotes it.
        {"/opt/kova", "ADMIN", "secret", "/data/pay.db", "\"/data/year end/load.sql\"",
         "/opt/kova/dbisql -c \"uid=ADMIN;pwd=secret;dsn=/data/pay.db\" -q \"/data/year end/load.sql\"",
         {"/opt/kova/dbisql", "-c", "uid=ADMIN;pwd=secret;dsn=/data/pay.db", "-q", "/data/year end/load.sql"}},
        // The program path is taken whole.
        {"/opt/kova apps", "", "", "", "", "/opt/kova apps/dbisql -c \"uid=;pwd=;dsn=\" -q ",
         {"/opt/kova apps/dbisql", "-c", "uid=;pwd=;dsn=", "-q"}},
        // A double quote in a value is passed unchanged and breaks the text.
        {"/opt/kova", "U", "pa\"ss word", "D", "s.sql", "/opt/kova/dbisql -c \"uid=U;pwd=pa\"ss word;dsn=D\" -q s.sql",
         {"/opt/kova/dbisql", "-c", "uid=U;pwd=pass", "word;dsn=D -q s.sql"}},
    };
    for (const auto& c : cases) {
        Recorded recorded;
        TExecDBISQL& runner = recorded.component;
        runner.SetProgramDir(c.programDir);
        runner.SetUserID(c.userId);
        runner.SetPassword(c.password);
        runner.SetDataSourceName(c.dataSource);
        runner.SetSQLScriptFile(c.script);
        EXPECT_EQ(runner.CommandLine(), c.commandLine);
        runner.SetExecute(true);
        ASSERT_EQ(recorded.starts.size(), 1u);
        EXPECT_EQ(recorded.starts[0], c.words) << c.commandLine;
    }
}

TEST(TExecDBISQL, EveryAssignmentOfTrueRunsAndFalseOnlyStores) {
    Recorded recorded;
    TExecDBISQL& runner = recorded.component;
    EXPECT_FALSE(runner.GetExecute());
    runner.SetSQLScriptFile("/data/first.sql");
    EXPECT_TRUE(recorded.starts.empty()) << "setting a property runs nothing";

    const struct {
        bool value;
        std::size_t runsAfter;
    } steps[] = {{false, 0}, {true, 1}, {true, 2}, {false, 2}, {false, 2}, {true, 3}};
    for (const auto& step : steps) {
        runner.SetExecute(step.value);
        EXPECT_EQ(runner.GetExecute(), step.value);
        EXPECT_EQ(recorded.starts.size(), step.runsAfter);
    }
    runner.SetSQLScriptFile("/data/second.sql");
    runner.SetExecute(true);
    EXPECT_EQ(recorded.starts.back().back(), "/data/second.sql") << "a run takes the properties as they are then";
}

TEST(TExecDBISQL, FailedStartNeverReachesTheCaller) {
    TExecDBISQL runner;
    runner.SetProcessStarter([](const Words&) -> std::string { throw std::runtime_error("no more processes"); });
    EXPECT_NO_THROW(runner.SetExecute(true));
    EXPECT_EQ(runner.LastStartError(), "The SQL tool could not be started: no more processes");

    TExecDBISQL missing;
    missing.SetProgramDir("/nonexistent/kova");
    EXPECT_NO_THROW(missing.SetExecute(true));
    EXPECT_EQ(missing.LastStartError(), "The program /nonexistent/kova/dbisql does not exist.");
    EXPECT_TRUE(missing.GetExecute());
}

TEST(TExecDBISQL, StartsEmptyWithTheToolBesideTheRunningProgram) {
    // The current folder is not where the tool is looked for.
    const fs::path before = fs::current_path();
    fs::current_path(fs::temp_directory_path());
    TExecDBISQL runner;
    fs::current_path(before);
    EXPECT_TRUE(fs::equivalent(runner.GetProgramDir(), IRAS_DBISQL_DIR)) << runner.GetProgramDir();
    EXPECT_EQ(runner.GetSQLScriptFile() + runner.GetUserID() + runner.GetPassword() + runner.GetDataSourceName(), "");
    EXPECT_FALSE(runner.GetExecute());
}

TEST(TExecDBISQL, RegistersOnTheKovaComponentsPage) {
    TExecDBISQL::Register();
    TExecDBISQL::Register();
    EXPECT_EQ(ComponentRegistry::PageOf("TExecDBISQL"), "Kova Components");
    EXPECT_EQ(ComponentRegistry::ComponentsOn("Kova Components"), Words{"TExecDBISQL"});

    TExecDBISQL form;  // any component can own another
    const std::unique_ptr<TComponent> made = ComponentRegistry::Create("TExecDBISQL", &form);
    const auto* runner = dynamic_cast<const TExecDBISQL*>(made.get());
    ASSERT_NE(runner, nullptr);
    EXPECT_EQ(runner->Owner(), &form);
    EXPECT_EQ(ComponentRegistry::Create("TNoSuchComponent"), nullptr);
}

// Real runs: the component starts the shipped dbisql on a scratch database.
class ExecDBISQLRun : public ScriptFolder {
protected:
    void SetUp() override {
        ScriptFolder::SetUp();
        runner_.SetProgramDir(IRAS_DBISQL_DIR);
        runner_.SetUserID("ADMIN");
        runner_.SetPassword("secret");
        runner_.SetDataSourceName(database_);
    }
    TExecDBISQL runner_;
};

TEST_F(ExecDBISQLRun, ScriptRowsReachTheDatabase) {
    WriteText(folder_ / "load.sql",
              "INSERT INTO Staff VALUES (1, 'Tan');\n"
              "INSERT INTO Staff SELECT 2, IF EXISTS (SELECT * FROM Staff) THEN 'Lee' ELSE 'None' ENDIF;\n");
    runner_.SetSQLScriptFile((folder_ / "load.sql").string());
    runner_.SetExecute(true);
    EXPECT_EQ(runner_.LastStartError(), "");
    const std::string log = LogWhenEnded(folder_ / "load.sql.log");
    EXPECT_NE(log.find("The script ran as one transaction and was committed."), std::string::npos) << log;
    EXPECT_NE(log.find("dbisql ended with status 0."), std::string::npos) << log;
    EXPECT_EQ(StaffNames(), "Tan,Lee");
}

TEST_F(ExecDBISQLRun, BadInputEndsAsALineInTheToolsLog) {
    fs::create_directory(folder_ / "year end");
    const struct {
        const char* name;
        const char* scriptFile;  // as set on the component, in the test's folder
        const char* scriptText;  // written to scriptFile; nullptr: none
        const char* dataSource;  // "": the scratch database
        const char* log;         // where dbisql logs, in the test's folder
        int status;
        const char* line;
        const char* staffAfter;
    } cases[] = {
        {"missing script", "gone.sql", nullptr, "", "gone.sql.log", 2, "the script file \"{dir}/gone.sql\" does not exist.",
         ""},
        {"SQL error", "bad.sql", "INSERT INTO Staff VALUES (1, 'Tan');\nINSERT INTO Staff VALUES (2);\n", "",
         "bad.sql.log", 4, "Error in the script; nothing of it was applied: ", ""},
        {"unknown data source", "load.sql", "INSERT INTO Staff VALUES (1, 'Tan');", "{dir}/nowhere.db",
         "load.sql.log", 3, "Error: the data source \"{dir}/nowhere.db\" cannot be opened", ""},
        // An unquoted path with blanks reaches the tool as two words.
        {"path split at a blank", "year end/load.sql", "INSERT INTO Staff VALUES (1, 'Tan');", "", "year.log", 1,
         "the command line names 2: \"{dir}/year\" \"end/load.sql\".", ""},
        {"quoted path with a blank", "\"year end/load.sql\"", "INSERT INTO Staff VALUES (1, 'Tan');", "",
         "year end/load.sql.log", 0, "committed", "Tan"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string scriptFile = c.scriptFile;
        const bool quoted = scriptFile.front() == '"';
        if (quoted) scriptFile = scriptFile.substr(1, scriptFile.size() - 2);
        if (c.scriptText) WriteText(folder_ / scriptFile, c.scriptText);
        scriptFile = (folder_ / scriptFile).string();
        runner_.SetSQLScriptFile(quoted ? "\"" + scriptFile + "\"" : scriptFile);
        runner_.SetDataSourceName(*c.dataSource ? InFolder(c.dataSource, folder_) : database_);

        runner_.SetExecute(true);
        EXPECT_EQ(runner_.LastStartError(), "");
        const std::string log = LogWhenEnded(folder_ / c.log);
        EXPECT_NE(log.find(InFolder(c.line, folder_)), std::string::npos) << log;
        EXPECT_NE(log.find("dbisql ended with status " + std::to_string(c.status) + "."), std::string::npos) << log;
        EXPECT_EQ(StaffNames(), c.staffAfter);
    }
}

// The process of the dbisql whose command line holds word, or 0.
pid_t ProcessWithWord(const std::string& word) {
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        const std::string commandLine = ReadText(entry.path() / "cmdline");
        if (commandLine.find(std::string(1, '\0') + word + '\0') != std::string::npos &&
            commandLine.find("dbisql") != std::string::npos) {
            return static_cast<pid_t>(std::stol(name));
        }
    }
    return 0;
}

// The parent and session of a process, from /proc/<pid>/stat.
std::pair<pid_t, pid_t> ParentAndSession(pid_t process) {
    const std::string stat = ReadText("/proc/" + std::to_string(process) + "/stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 2));
    std::string state;
    long parent = 0, group = 0, session = 0;
    fields >> state >> parent >> group >> session;
    return {static_cast<pid_t>(parent), static_cast<pid_t>(session)};
}

TEST_F(ExecDBISQLRun, ReturnsAtOnceWhileTheToolRunsDetached) {
    // The script is a named pipe: dbisql cannot get past reading it until the
    // test writes it, so it is bound to be still running when the component
    // returns, however slow the machine.
    const fs::path script = folder_ / "load.sql";
    ASSERT_EQ(::mkfifo(script.c_str(), 0600), 0);
    // A descriptor of ours that the tool must not inherit.
    WriteText(folder_ / "ours.txt", "");
    const int ours = ::open((folder_ / "ours.txt").c_str(), O_RDONLY);
    ASSERT_GE(ours, 0);
    runner_.SetSQLScriptFile(script.string());

    auto run = std::async(std::launch::async, [&] { runner_.SetExecute(true); });
    const bool returned = run.wait_for(ProcessPatience) == std::future_status::ready;
    EXPECT_TRUE(returned) << "the component waits for the tool";
    // Waiting on its script, the tool holds the pipe open for reading.
    int writer = -1;
    EXPECT_TRUE(WaitFor([&] { return (writer = ::open(script.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; }))
        << "dbisql did not start";
    if (!returned || writer < 0) {  // set the blocked tool free before failing
        if (writer < 0) writer = ::open(script.c_str(), O_WRONLY);
        ::close(writer);
        run.wait();
        ::close(ours);
        FAIL();
    }
    run.get();
    EXPECT_EQ(runner_.LastStartError(), "");

    // Not our child, not in our session, nothing of ours open.
    errno = 0;
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child (or zombie) of ours is left";
    EXPECT_EQ(errno, ECHILD);
    const pid_t tool = ProcessWithWord(script.string());
    ASSERT_NE(tool, 0);
    const auto [parent, session] = ParentAndSession(tool);
    EXPECT_NE(parent, ::getpid());
    EXPECT_NE(session, ::getsid(0));
    const std::string fdFolder = "/proc/" + std::to_string(tool) + "/fd/";
    for (const int fd : {0, 1, 2}) EXPECT_EQ(fs::read_symlink(fdFolder + std::to_string(fd)), "/dev/null") << fd;
    for (const auto& entry : fs::directory_iterator(fdFolder)) {
        std::error_code error;
        EXPECT_NE(fs::read_symlink(entry.path(), error), folder_ / "ours.txt") << "descriptor leaked";
    }
    ::close(ours);

    const std::string text = "INSERT INTO Staff VALUES (1, 'Tan');\n";
    ::fcntl(writer, F_SETFL, 0);
    EXPECT_EQ(::write(writer, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::close(writer);
    const std::string log = LogWhenEnded(folder_ / "load.sql.log");
    EXPECT_NE(log.find("dbisql ended with status 0."), std::string::npos) << log;
    EXPECT_EQ(StaffNames(), "Tan");
}

}  // namespace
}  // namespace iras::testing
