/// The platform of a browser: the page's keys, focus and controllers, sound through
/// its audio worklet, its voices, and files that the browser stores.
#pragma once

#include <memory>

#include "platform/platform.h"
#include "platform/web/page.h"

namespace vorn {

/// On the thread that then plays, which may wait; the page has a thread of its own. The page is not owned.
std::unique_ptr<Platform> makeWebPlatform(Page& page);

}  // namespace vorn
