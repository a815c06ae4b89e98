#include "Check.h"
#include "common/Error.h"

TEST_CASE("The jumping trap leaves at the error and keeps it until its end") {
    int steps = 0;
    {
        const JumpTrap trap([&] {
            ++steps;
            Raise(234, u"zu lang");
        });
        CHECK(trap.Caught());
        CHECK(LastError().Number() == 234);
        CHECK(LastError().Description() == u"zu lang");
    }
    CHECK(steps == 1);
    CHECK(LastError().Number() == 0);
    CHECK(LastError().Description().empty());
}

TEST_CASE("The resuming trap goes on, with the last error pending") {
    ResumeTrap trap;
    CHECK_FALSE(trap([] { Raise(2, u"eins"); }));
    CHECK(trap([] { CHECK(LastError().Description() == u"eins"); }));
    CHECK_FALSE(trap([] { Raise(RuntimeError::InvalidArgument); }));
    CHECK(LastError().Number() == 5);
}

TEST_CASE("An error passes an inner trap that ended before it") {
    const Error raised = RaisedBy([] {
        {
            const JumpTrap inner([] { Raise(2, u"innen"); });
        }
        CHECK(LastError().Number() == 0);
        Raise(5, u"außen");
    });
    CHECK(raised.number == 5);
    CHECK(raised.description == u"außen");
}

TEST_CASE("Exhausted memory is an error like any other") {
    CHECK(RaisedBy([] { throw std::bad_alloc(); }).number == 7);
}
