#include <new>

#include "Check.h"

TEST_CASE("A trap reports only its own error, and treats out-of-memory as an error") {
    const Error raised = RaisedBy([] {
        CHECK(RaisedBy([] { throw std::bad_alloc(); }).number == 7);
        CHECK((LastError().Number() == 0 && LastError().Description().empty()));
        Raise(5, u"außen");
    });
    CHECK((raised.number == 5 && raised.description == u"außen"));
    CHECK(LastError().Number() == 0);
}

TEST_CASE("An error stays pending for later steps, even after a trap that caught nothing") {
    const auto pending = [](std::int32_t number) { CHECK(LastError().Number() == number); };
    IgnoreErrors([&] { pending(0); }, [] { Raise(5, u"a"); }, [&] { pending(5); }, [] { TrapError([] {}); },
                 [] { IgnoreErrors([] {}); }, [&] { pending(5); }, [] { throw std::bad_alloc(); }, [&] { pending(7); },
                 [] { TrapError([] { Raise(5, u"b"); }); }, [&] { pending(0); });
    CHECK(LastError().Number() == 0);
}
