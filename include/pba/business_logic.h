// SPDX-License-Identifier: Apache-2.0
// The host's side of the contract: what the view asks at the start of each activity.
#pragma once

#include "kro/result.h"

namespace pba {

class ILoginByPasswordView;
class ILoginByTokenView;
class IMainView;
class IPasswordRecoveryView;

// Implemented by the host, which keeps it alive until Run has returned. Every call is made on the view's
// thread; a negative result makes the view report an internal error and abandon what the person asked for.
class IBusinessLogic
{
public:
    virtual ~IBusinessLogic() = default;

    // Once, at the end of the start-up; the host asks for the first screen here. May take its time: the
    // wait cursor shows.
    virtual kro::result_t Init(IMainView *view) = 0;
    // Tokens may have come or gone; asked when the platform says so and whenever the window becomes active,
    // so also when a message is closed: one that is shown in here each time would never end.
    // `*screenMustChange` arrives as false; true chooses the screen anew and empties the login fields. A
    // screen request made inside waits for the person's next step.
    virtual kro::result_t UpdateConnectedTokens(bool *screenMustChange) = 0;
    // `*connected` arrives as false.
    virtual kro::result_t CheckTokensConnected(bool *connected) = 0;
    // The three starts hand over the view of the activity; the host answers by SetLogic on it, at once.
    virtual kro::result_t StartLoginByPassword(ILoginByPasswordView *view) = 0;
    virtual kro::result_t StartPasswordRecovery(IPasswordRecoveryView *view) = 0;
    virtual kro::result_t StartLoginByToken(ILoginByTokenView *view) = 0;
    // The host decides whether it may start; being asked proves nothing. On the way it usually calls
    // ShowStartingOsScreen and Close.
    virtual kro::result_t StartOperatingSystem() = 0;
};

} // namespace pba
