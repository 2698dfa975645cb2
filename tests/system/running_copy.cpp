#include "tests/system/running_copy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QJsonDocument>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>

namespace nimbry::system_test {

using namespace std::chrono_literals;

std::ostream& operator<<(std::ostream& out, const Ending& ending) {
    if (ending.number < 0) return out << "still running";
    return out << (ending.by_itself ? "exit status " : "signal ") << ending.number;
}

bool eventually(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + 60s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit) return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

namespace {

void redirect(int descriptor, const char* file, int flags) {
    const int opened = open(file, flags, 0600);
    if (opened < 0 || dup2(opened, descriptor) < 0) _exit(126);
    close(opened);
}

// Under the address sanitizer a program ends at once where another library is loaded before the sanitizer's own.
void allow_preloading() {
    const char* options = std::getenv("ASAN_OPTIONS");
    setenv("ASAN_OPTIONS",
           ((options == nullptr ? "" : std::string(options) + ":") + "verify_asan_link_order=0").c_str(), 1);
}

pid_t started(const std::string& program, const std::vector<std::string>& arguments, const Process::Setting& setting,
              const TemporaryFolder& outputs) {
    const std::string out = outputs.path("out");
    const std::string err = outputs.path("err");
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);

    const pid_t id = fork();
    if (id < 0) throw std::runtime_error("no process");
    if (id > 0) return id;
    // Where the tests run in the background of a script they ignore the interrupt, and so would all that they start.
    for (const int number : {SIGINT, SIGQUIT, SIGHUP, SIGTERM, SIGPIPE}) std::signal(number, SIG_DFL);
    redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    redirect(STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT);
    redirect(STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT);
    for (const auto& [name, value] : setting.environment) setenv(name.c_str(), value.c_str(), 1);
    allow_preloading();
    if (setting.in_child) setting.in_child();
    execv(program.c_str(), words.data());
    _exit(127);
}

}  // namespace

Process::Process(const std::string& program, const std::vector<std::string>& arguments, const Setting& setting)
    : id_(started(program, arguments, setting, outputs_)) {}

Process::~Process() {
    if (!runs()) return;
    signal(SIGKILL);
    ending();
}

void Process::signal(int number) const {
    if (!ended_) kill(id_, number);
}

bool Process::runs() {
    if (ended_) return false;
    int status = 0;
    if (waitpid(id_, &status, WNOHANG) != id_) return true;
    ended_ = true;
    ending_ = WIFEXITED(status) ? Ending{true, WEXITSTATUS(status)} : Ending{false, WTERMSIG(status)};
    return false;
}

void Process::stop() const {
    signal(SIGSTOP);
    siginfo_t told{};
    EXPECT_TRUE(eventually(
        [&] { return waitid(P_PID, static_cast<id_t>(id_), &told, WSTOPPED | WNOHANG) == 0 && told.si_pid == id_; }));
    // It is told a little before the last thread leaves its processor.
    EXPECT_TRUE(eventually([this] {
        const double used = processor_seconds();
        std::this_thread::sleep_for(100ms);
        return processor_seconds() == used;
    }));
}

Ending Process::ending() {
    eventually([this] { return !runs(); });
    return ending_;
}

double Process::processor_seconds() const {
    timespec used{};
    clockid_t clock{};
    if (clock_getcpuclockid(id_, &clock) != 0 || clock_gettime(clock, &used) != 0) return 0;
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

std::string own_address(int n) {
    const int id = static_cast<int>(getpid());
    return "127." + std::to_string(1 + id / 250 % 200) + "." + std::to_string(id % 250) + "." + std::to_string(n);
}

RunningCopy::RunningCopy(const TemporaryFolder& folder, const std::string& device, const Setting& setting)
    : Process(NIMBRYD, {"--dir", folder.path(), "--device", device}, setting), folder_(folder) {}

bool RunningCopy::listens() {
    return eventually([this] { return status()["serial"].toObject()["open"].toBool(); });
}

QJsonObject RunningCopy::status() const {
    Process asked(NIMBRYCTL, {"--dir", folder_.path(), "status", "--json"});
    if (asked.ending() != exited(0)) return {};
    return QJsonDocument::fromJson(QByteArray::fromStdString(asked.standard_output())).object();
}

int RunningCopy::frames(const char* kind) const {
    return status()["frames"].toObject()[QLatin1String(kind)].toInt(-1);
}

std::vector<std::string> RunningCopy::log() const {
    const std::string text = folder_.contents("nbyprog.log");
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

int RunningCopy::logged(const std::string& text) const {
    const std::vector<std::string> lines = log();
    return static_cast<int>(
        std::count_if(lines.begin(), lines.end(), [&](const std::string& line) { return line.ends_with(text); }));
}

std::string RunningCopy::last_logged() const {
    const std::vector<std::string> lines = log();
    return lines.empty() ? "" : lines.back();
}

}  // namespace nimbry::system_test
