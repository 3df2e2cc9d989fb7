// The private X servers the live tests run on keep every client they are
// asked for: an Xvfb that resets when its last client leaves refuses a
// client that connects at that moment.
#include <gtest/gtest.h>

#include <X11/Xlib.h>

#include "x_session.h"

namespace zirvel_test {
namespace {

TEST(PrivateXServerTest, ClientsThatComeAndGoOneAfterAnotherAreAllTaken) {
    PrivateXServer server(640, 480);
    ASSERT_TRUE(server.Running());
    int refused = 0;
    for (int client = 0; client < 300; ++client) {
        Display* display = XOpenDisplay(server.Name().c_str());
        if (!display) {
            ++refused;
            continue;
        }
        XCloseDisplay(display);
    }
    EXPECT_EQ(refused, 0) << "of 300 connections";
}

}  // namespace
}  // namespace zirvel_test
