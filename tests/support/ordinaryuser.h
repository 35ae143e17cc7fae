#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

/// While it lives, the process has the rights of an ordinary user even where the tests run as root,
/// whom no file permission stops.
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
