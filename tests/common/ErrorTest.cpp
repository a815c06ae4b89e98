#include "Check.h"

TEST_CASE("An error passes an inner trap that ended before it, and exhausted memory is an error too") {
    const Error raised = RaisedBy([] {
        CHECK(RaisedBy([] { throw std::bad_alloc(); }).number == 7);
        CHECK(LastError().Number() == 0);
        CHECK(LastError().Description().empty());
        Raise(5, u"außen");
    });
    CHECK(raised.number == 5);
    CHECK(raised.description == u"außen");
}
