#include <doctest/doctest.h>

#include "RawRegistry.h"
#include "TestMachine.h"
#include "platform/Process.h"

TEST_CASE("A test's machine has roots of its own, of which nothing stays") {
    const std::string key = "Software\\Vandrel\\Tallora\\Test";
    const std::string own = "Software\\vtv4v-tests-" + std::to_string(platform::GetCurrentProcessId());
    for (const platform::Handle root :
         {platform::KeyClassesRoot, platform::KeyLocalMachine, platform::KeyUsers, platform::KeyCurrentUser}) {
        CAPTURE(root);
        {
            const TestMachine machine;
            RawValueSet(root, key, "", RawText("here"));
            CHECK(RawKeyExists(root, key));
        }
        CHECK_FALSE(RawKeyExists(root, key));
        CHECK_FALSE(RawKeyExists(platform::KeyCurrentUser, own));
    }
}
