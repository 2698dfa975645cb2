#include "platform/network_interfaces.h"

#include <gtest/gtest.h>

#include <QNetworkInterface>

#include "tests/support/without_network.h"

namespace nimbry::platform {
namespace {

TEST(Network, IsThereWhileAnInterfaceOtherThanTheLoopbackIsUpAndHasAnAddress) {
    bool leads_out = false;
    for (const QNetworkInterface& each : QNetworkInterface::allInterfaces()) {
        const auto flags = each.flags();
        leads_out = leads_out || (flags.testFlag(QNetworkInterface::IsUp) &&
                                  !flags.testFlag(QNetworkInterface::IsLoopBack) && !each.addressEntries().isEmpty());
    }
    EXPECT_EQ(on_a_network(), leads_out);
}

TEST(Network, IsNotThereWithTheLoopbackAlone) {
    const int answer = asked_without_network(on_a_network);
    if (answer == 2) GTEST_SKIP() << "this system keeps its processes on the network";
    EXPECT_EQ(answer, 0);
}

}  // namespace
}  // namespace nimbry::platform
