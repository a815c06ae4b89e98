#include "Check.h"
#include "common/Error.h"

TEST_CASE("A trap leaves at the error or goes on, and the error is pending until the trap's end") {
    bool leftAtError = true;
    {
        const JumpTrap trap([&] {
            Raise(234, u"zu lang");
            leftAtError = false;
        });
        CHECK(trap.Caught());
        CHECK(leftAtError);
        CHECK(LastError().Number() == 234);
        CHECK(LastError().Description() == u"zu lang");
    }
    CHECK(LastError().Number() == 0);
    CHECK(LastError().Description().empty());

    ResumeTrap trap;
    CHECK_FALSE(trap([] { Raise(2, u"eins"); }));
    CHECK(trap([] { CHECK(LastError().Description() == u"eins"); }));
    CHECK_FALSE(trap([] { Raise(RuntimeError::InvalidArgument); }));
    CHECK(LastError().Number() == 5);
}

TEST_CASE("An error passes an inner trap that ended before it, and exhausted memory is an error too") {
    const Error raised = RaisedBy([] {
        CHECK(RaisedBy([] { throw std::bad_alloc(); }).number == 7);
        CHECK(LastError().Number() == 0);
        Raise(5, u"außen");
    });
    CHECK(raised.number == 5);
    CHECK(raised.description == u"außen");
}
