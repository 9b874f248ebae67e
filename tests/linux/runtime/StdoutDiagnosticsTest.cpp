#include "platform/linux/StdoutDiagnostics.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace kestrovan {
namespace {

class StdoutDiagnosticsTest : public testing::Test {
protected:
    StdoutDiagnosticsTest() { EXPECT_EQ(pipe2(ends_, O_CLOEXEC), 0); }
    ~StdoutDiagnosticsTest() override
    {
        for (const int end : ends_)
            close(end);
    }

    std::string readAll() const
    {
        fcntl(ends_[0], F_SETFL, O_NONBLOCK);
        std::string all;
        char chunk[4096];
        for (ssize_t got; (got = read(ends_[0], chunk, sizeof chunk)) > 0;)
            all.append(chunk, static_cast<std::size_t>(got));
        return all;
    }

    int ends_[2] = {-1, -1};
};

TEST_F(StdoutDiagnosticsTest, LinesOfSeveralThreadsComeOutWholeAndAsOneLineEach)
{
    StdoutDiagnostics diagnostics(ends_[1]);
    const std::string text(300, 'x');
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 20; ++n)
                diagnostics.line(text + "\r\n" + text);
        });
    for (auto& thread : threads)
        thread.join();
    std::istringstream lines(readAll());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_EQ(line, text + "  " + text);
    EXPECT_EQ(count, 80);
}

TEST_F(StdoutDiagnosticsTest, AFullPipeDropsLinesInsteadOfBlocking)
{
    StdoutDiagnostics diagnostics(ends_[1]);
    for (int n = 0; n < 2000; ++n) // far beyond a pipe's 64 KiB, with nobody reading
        diagnostics.line(std::string(100, 'x'));
    EXPECT_EQ(readAll().size() % 101, 0U);
    diagnostics.line("again");
    EXPECT_EQ(readAll(), "again\n");
}

TEST_F(StdoutDiagnosticsTest, AReaderThatHasGoneEndsNothing)
{
    StdoutDiagnostics diagnostics(ends_[1]);
    close(ends_[0]);
    diagnostics.line("to nobody"); // SIGPIPE would end this test
    StdoutDiagnostics closed(ends_[0]);
    closed.line("to nothing");
}

} // namespace
} // namespace kestrovan
