// Mouse and keyboard for tests; pump afterwards.
#pragma once

#include "quor/platform/proving/UserInput.h"

namespace test {

using quor::MouseButton;
using quor::sendClick;
using quor::sendDrag;
using quor::sendKeys;
using quor::sendMouseMove;
using quor::sendText;

}  // namespace test
