#include "platform/fibers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace nimbry::platform {
namespace {

TEST(Fibers, RunsWorkAtOnceAndComesBackWhenItEnds) {
    Fibers fibers;
    std::string order;
    fibers.run([&] { order += "work "; });
    order += "after";
    EXPECT_EQ(order, "work after");
}

TEST(Fibers, AWorkThatSuspendsIsGoneOnWithWhereItStood) {
    Fibers fibers;
    std::string order;
    Fiber* fiber = nullptr;
    fibers.run([&] {
        fiber = fibers.current();
        order += "1 ";
        fibers.suspend();
        order += "3 ";
        fibers.suspend();
        order += "5 ";
    });
    order += "2 ";
    fibers.resume(*fiber);
    order += "4 ";
    fibers.resume(*fiber);
    EXPECT_EQ(order, "1 2 3 4 5 ");
}

TEST(Fibers, CurrentNamesTheRunningFiberAndNothingOnTheMainStack) {
    Fibers fibers;
    EXPECT_EQ(fibers.current(), nullptr);
    fibers.run([&] {
        Fiber* const outer = fibers.current();
        EXPECT_NE(outer, nullptr);
        fibers.run([&] { EXPECT_NE(fibers.current(), outer); });
        EXPECT_EQ(fibers.current(), outer);
    });
    EXPECT_EQ(fibers.current(), nullptr);
}

TEST(Fibers, AFiberStartedFromAFiberComesBackToItWhenItSuspends) {
    Fibers fibers;
    std::string order;
    Fiber* inner = nullptr;
    fibers.run([&] {
        order += "outer ";
        fibers.run([&] {
            inner = fibers.current();
            order += "inner ";
            fibers.suspend();
            order += "inner-again ";
        });
        order += "outer-again ";
    });
    order += "main ";
    fibers.resume(*inner);
    EXPECT_EQ(order, "outer inner outer-again main inner-again ");
}

TEST(Fibers, AnExceptionIsCaughtInsideItsFiberAcrossASuspension) {
    Fibers fibers;
    Fiber* fiber = nullptr;
    std::string caught;
    fibers.run([&] {
        fiber = fibers.current();
        try {
            fibers.suspend();
            throw std::runtime_error("after the wait");
        } catch (const std::runtime_error& error) {
            caught = error.what();
        }
    });
    fibers.resume(*fiber);
    EXPECT_EQ(caught, "after the wait");
}

// The runtime's list of the exceptions being handled belongs to the thread: unless it changes hands with the stack, the
// first fiber to leave its catch block ends the other one's exception.
TEST(Fibers, TwoFibersMaySuspendInsideTheirCatchBlocksAndLeaveThemInAnyOrder) {
    Fibers fibers;
    Fiber* first = nullptr;
    Fiber* second = nullptr;
    std::string seen;
    const auto work = [&](Fiber*& self, const std::string& name) {
        return [&fibers, &self, &seen, name] {
            self = fibers.current();
            try {
                throw std::runtime_error(name);
            } catch (const std::runtime_error& error) {
                fibers.suspend();
                try {
                    throw;  // the one being handled: this fiber's own
                } catch (const std::runtime_error& again) {
                    seen += std::string(error.what()) + "=" + again.what() + " ";
                }
            }
        };
    };
    fibers.run(work(first, "first"));
    fibers.run(work(second, "second"));
    EXPECT_EQ(std::current_exception(), nullptr);
    fibers.resume(*first);
    fibers.resume(*second);
    EXPECT_EQ(seen, "first=first second=second ");
}

int depth_reached(Fibers& fibers, int depth) {
    volatile char room[512] = {};
    room[0] = static_cast<char>(depth);
    if (depth == 0) {
        fibers.suspend();
        return 0;
    }
    return depth_reached(fibers, depth - 1) + (room[0] == static_cast<char>(depth) ? 1 : 0);
}

TEST(Fibers, SuspendsFromDeepInsideItsCalls) {
    Fibers fibers;
    Fiber* fiber = nullptr;
    int intact = 0;
    fibers.run([&] {
        fiber = fibers.current();
        intact = depth_reached(fibers, 100);
    });
    fibers.resume(*fiber);
    EXPECT_EQ(intact, 100);
}

TEST(Fibers, StacksAreUsedAgain) {
    Fibers fibers;
    for (int n = 0; n < 1000; ++n) fibers.run([] {});
    EXPECT_EQ(fibers.stacks(), 1U);
}

TEST(Fibers, ABurstOfOverlappingWorkGivesItsStacksBack) {
    Fibers fibers;
    std::vector<Fiber*> waiting;
    for (int n = 0; n < 50; ++n) {
        fibers.run([&] {
            waiting.push_back(fibers.current());
            fibers.suspend();
        });
    }
    EXPECT_EQ(fibers.stacks(), 50U);
    for (Fiber* fiber : waiting) fibers.resume(*fiber);
    EXPECT_EQ(fibers.stacks(), 8U);
}

TEST(Fibers, WhatAWorkHoldsIsLetGoWhenItEnds) {
    Fibers fibers;
    const auto held = std::make_shared<int>(1);
    fibers.run([held] {});
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Fibers, AMisuseIsRefusedInsteadOfRunningOnTheWrongStack) {
    Fibers fibers;
    EXPECT_THROW(fibers.suspend(), std::logic_error) << "the main stack has nobody to go back to";
    Fiber* ended = nullptr;
    fibers.run([&] { ended = fibers.current(); });
    EXPECT_THROW(fibers.resume(*ended), std::logic_error) << "an ended fiber has nothing to go on with";
    fibers.run([&] { EXPECT_THROW(fibers.resume(*ended), std::logic_error) << "only the main stack resumes"; });
}

TEST(FibersDeathTest, AnExceptionThatLeavesItsWorkEndsTheProgram) {
    EXPECT_DEATH(
        {
            Fibers fibers;
            fibers.run([] { throw std::runtime_error("nobody catches this"); });
        },
        "nobody catches this");
}

int overrun(int depth) {
    volatile char room[4096] = {};
    return depth == 0 ? room[0] : overrun(depth - 1) + room[1];
}

TEST(FibersDeathTest, OverrunningTheStackEndsTheProgram) {
    EXPECT_DEATH(
        {
            Fibers fibers;
            fibers.run([] { static_cast<void>(overrun(1000)); });
        },
        "");
}

}  // namespace
}  // namespace nimbry::platform
