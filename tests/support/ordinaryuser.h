#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

/// While this object exists, the process has the permissions of an ordinary user, even if the tests
/// run as root, who can access every file.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        constexpr uid_t nobody = 65534;
        if (user == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(seteuid(user), 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    uid_t user = geteuid();
};
