#include "platform/x11/x_error_trap.h"

namespace zirvel::x11 {
namespace {

int firstError = 0;

int RecordError(Display*, XErrorEvent* error) {
    if (firstError == 0) firstError = error->error_code;
    return 0;
}

}  // namespace

XErrorTrap::XErrorTrap(Display* display) : display_(display) {
    XSync(display_, False);  // earlier errors are not ours
    firstError = 0;
    previous_ = XSetErrorHandler(RecordError);
}

XErrorTrap::~XErrorTrap() {
    XSync(display_, False);
    XSetErrorHandler(previous_);
}

bool XErrorTrap::Succeeded() {
    XSync(display_, False);
    return firstError == 0;
}

int XErrorTrap::FirstError() const { return firstError; }

}  // namespace zirvel::x11
