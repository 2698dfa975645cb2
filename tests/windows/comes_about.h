#pragma once

#include <QTest>
#include <functional>

namespace nimbry::test {

/// Lets events run until `condition` holds, for a minute at most: on a busy machine the five seconds of QTest are few.
/// True when it holds.
inline bool comes_about(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 60'000);
}

}  // namespace nimbry::test
