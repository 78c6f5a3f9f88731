#include "support/child.h"

#include "support/files.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned TIME_LIMIT_S = 60;

[[noreturn]] void be_child(TempDir const& folder, std::function<void()> const& body) {
    alarm(TIME_LIMIT_S);
    bool const redirected = std::freopen(folder.file("out").c_str(), "w", stdout) != nullptr &&
                            std::freopen(folder.file("err").c_str(), "w", stderr) != nullptr;
    if (!redirected) std::_Exit(EXIT_FAILURE);
    body();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

ChildResult run_child(std::function<void()> const& body) {
    TempDir const folder;
    std::fflush(nullptr); // or the child would write what is pending here a second time
    pid_t const child = fork();
    if (child < 0) throw std::runtime_error("fork");
    if (child == 0) be_child(folder, body);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(folder.file("out")),
            read_file(folder.file("err")), usage.ru_maxrss};
}
