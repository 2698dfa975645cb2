#include "platform/control_server.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <QByteArray>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "tests/platform/control_server_fixture.h"

namespace nimbry::platform::test {
namespace {

using namespace std::chrono_literals;

TEST_F(ControlServerTest, ARequestIsAnsweredAndTheConnectionCloses) {
    TestCaller caller(folder.path());
    caller.ask({"one", "two"});
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"one\\n\"}\n{\"out\":\"two\\n\"}\n") + done_line);
    EXPECT_TRUE(comes([this] { return server->callers() == 0; }));
    EXPECT_EQ(caller.process(), ::getpid());
}

TEST_F(ControlServerTest, EveryPieceAndTheStatusReachTheCaller) {
    answering = [](const Words&, Asker& asker) {
        asker.complain("why");
        asker.show({"picture\n", "small\n"});
        return 1;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    EXPECT_EQ(caller.answer(), "{\"err\":\"why\"}\n{\"screen\":[\"picture\\n\",\"small\\n\"]}\n{\"status\":1}\n");
}

TEST_F(ControlServerTest, ArgumentsBecomeTextsOfTheEngine) {
    Words heard;
    answering = [&](const Words& words, Asker&) {
        heard = words;
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"für → °C"});
    caller.answer();
    EXPECT_EQ(heard, Words{"f\xFCr ? \260C"});
}

TEST_F(ControlServerTest, ARequestMayComeByteByByte) {
    TestCaller caller(folder.path());
    for (const char byte : request_line({"slow"})) {
        caller.send(QByteArray(1, byte));
        run_pending_events();
    }
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"slow\\n\"}\n") + done_line);
}

TEST_F(ControlServerTest, OnlyTheFirstLineIsARequest) {
    TestCaller caller(folder.path());
    caller.send(request_line({"one"}) + request_line({"two"}));
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"one\\n\"}\n") + done_line);
}

TEST_F(ControlServerTest, ARequestThatWaitsHoldsUpNoOther) {
    bool go = false;
    answering = [&](const Words& words, Asker& asker) {
        if (words.front() == "slow") pauses.wait_until([&] { return go; });
        asker.print(words.front());
        return 0;
    };
    TestCaller slow(folder.path());
    slow.ask({"slow"});
    ASSERT_TRUE(comes([this] { return pauses.waiting() == 1; }));
    TestCaller fast(folder.path());
    fast.ask({"fast"});
    EXPECT_EQ(fast.answer(), std::string("{\"out\":\"fast\"}\n") + done_line);
    EXPECT_EQ(slow.received(), "");
    go = true;
    EXPECT_EQ(slow.answer(), std::string("{\"out\":\"slow\"}\n") + done_line);
}

TEST_F(ControlServerTest, GarbageIsRefused) {
    const std::string refusal = "{\"err\":\"This is no request\"}\n{\"status\":2}\n";
    for (const QByteArray& garbage : {QByteArray("GET / HTTP/1.0\r\n"), QByteArray("\n"), QByteArray("\0\0\0\n", 4),
                                      QByteArray("{\"arguments\":[[]]}\n"), QByteArray(1000, '[') + '\n'}) {
        TestCaller caller(folder.path());
        caller.send(garbage);
        EXPECT_EQ(caller.answer(), refusal);
    }
}

TEST_F(ControlServerTest, ARequestWithoutAnEndIsRefusedAtItsGreatestLength) {
    TestCaller caller(folder.path());
    caller.send(QByteArray(static_cast<qsizetype>(longest_request) - 1, 'x'));
    run_pending_events();
    EXPECT_FALSE(caller.read());
    EXPECT_EQ(caller.received(), "") << "one byte is still missing";
    caller.send("x");
    EXPECT_EQ(caller.answer(), "{\"err\":\"The request is too long\"}\n{\"status\":2}\n");
}

TEST_F(ControlServerTest, ACallerWhoDoesNotFinishTheRequestIsDropped) {
    server.reset();
    serve(folder.path(), 30ms);
    TestCaller silent(folder.path());
    TestCaller half(folder.path());
    half.send("{\"arguments\":[");
    EXPECT_EQ(silent.answer(), "");
    EXPECT_EQ(half.answer(), "");
    EXPECT_TRUE(comes([this] { return server->callers() == 0; }));
}

TEST_F(ControlServerTest, AnAnswerMayTakeLongerThanTheRequestMay) {
    server.reset();
    serve(folder.path(), 30ms);
    answering = [this](const Words&, Asker& asker) {
        pauses.pause(100ms);
        asker.print("late");
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"late\"}\n") + done_line);
}

TEST_F(ControlServerTest, AVerbSeesThatItsCallerHasGone) {
    bool noticed = false;
    answering = [&](const Words&, Asker& asker) {
        pauses.wait_until([&] { return !asker.listening(); });
        asker.print("nobody hears this");
        noticed = true;
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    ASSERT_TRUE(comes([this] { return pauses.waiting() == 1; }));
    caller.hang_up();
    EXPECT_TRUE(comes([&] { return noticed; }));
    EXPECT_EQ(server->callers(), 0U);
}

TEST_F(ControlServerTest, ALongAnswerArrivesWhole) {
    const std::string text(3'000'000, 'w');
    answering = [&](const Words&, Asker& asker) {
        asker.print(text);
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    EXPECT_EQ(caller.answer(), "{\"out\":\"" + text + "\"}\n" + done_line);
}

TEST_F(ControlServerTest, ACallerWhoDoesNotTakeItsAnswerIsDropped) {
    bool dropped = false;
    answering = [&](const Words&, Asker& asker) {
        for (int n = 0; n < 100 && asker.listening(); ++n) asker.print(std::string(1'000'000, 'w'));
        dropped = !asker.listening();
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    EXPECT_TRUE(comes([&] { return dropped; }));
    EXPECT_TRUE(comes([this] { return server->callers() == 0; }));
}

TEST_F(ControlServerTest, AnAnswerThatIsNeverFetchedIsGivenUp) {
    server.reset();
    serve(folder.path(), 30ms);
    std::size_t callers_when_asked = 0;
    answering = [&](const Words&, Asker& asker) {
        callers_when_asked = server->callers();
        asker.print(std::string(4'000'000, 'w'));
        return 0;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    EXPECT_TRUE(comes([&] { return callers_when_asked == 1; }));
    EXPECT_TRUE(comes([this] { return server->callers() == 0; }));
}

TEST_F(ControlServerTest, ScreensThatACallerHasNoTimeForAreLeftOut) {
    answering = [](const Words&, Asker& asker) {
        for (int n = 0; n < 10'000; ++n) asker.show({std::string(10'000, 's')});
        return asker.listening() ? 0 : 1;
    };
    TestCaller caller(folder.path());
    caller.ask({"x"});
    const std::string answer = caller.answer();
    EXPECT_TRUE(answer.ends_with(done_line));
    EXPECT_LT(answer.size(), 2'000'000U);
}

TEST_F(ControlServerTest, MoreCallersThanThereIsRoomForAreTurnedAway) {
    std::list<TestCaller> callers;
    for (std::size_t n = 0; n < ControlServer::most_callers; ++n) callers.emplace_back(folder.path());
    ASSERT_TRUE(comes([this] { return server->callers() == ControlServer::most_callers; }));

    TestCaller late(folder.path());
    EXPECT_EQ(late.answer(), "{\"err\":\"Too many requests at a time: try again\"}\n{\"status\":1}\n");

    callers.pop_front();
    ASSERT_TRUE(comes([this] { return server->callers() < ControlServer::most_callers; }));
    TestCaller next(folder.path());
    next.ask({"x"});
    EXPECT_EQ(next.answer(), std::string("{\"out\":\"x\\n\"}\n") + done_line);
}

/// The processor time that this thread has used, seconds.
double processor_seconds() {
    timespec used{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

TEST_F(ControlServerTest, WhileTheSystemHasNoDescriptorLeftACallerWaitsAndCostsNoProcessorTime) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs descriptors of its own";
#endif
    TestCaller caller(folder.path());
    caller.ask({"x"});
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    // The lowest number that is free is the first that may no longer be given.
    const int first_free = ::dup(0);
    ASSERT_GE(first_free, 0);
    ::close(first_free);
    const rlimit none_left{static_cast<rlim_t>(first_free), limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none_left), 0);

    const double before = processor_seconds();
    QEventLoop half_a_second;
    QTimer::singleShot(500ms, &half_a_second, &QEventLoop::quit);
    half_a_second.exec();
    EXPECT_LT(processor_seconds() - before, 0.25) << "a notifier that is told again and again would use all of it";
    EXPECT_EQ(server->callers(), 0U);
    EXPECT_EQ(caller.received(), "");

    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"x\\n\"}\n") + done_line);
}

TEST_F(ControlServerTest, ItEndsWithCallersStillThere) {
    TestCaller silent(folder.path());
    TestCaller asked(folder.path());
    answering = [this](const Words&, Asker&) {
        pauses.pause(1h);
        return 0;
    };
    asked.ask({"x"});
    ASSERT_TRUE(comes([this] { return pauses.waiting() == 1; }));
    pauses.finish();
    server.reset();
    EXPECT_TRUE(comes([&] { return silent.read() && asked.read(); }));
    EXPECT_FALSE(TestCaller(folder.path()).connected());
}

}  // namespace
}  // namespace nimbry::platform::test
