// The renderer every platform installs: it draws the wheel, grid and hint
// pictures on canvases from the platform's factory and presents them on the
// overlay surfaces through the platform.
#pragma once

#include "core/canvas_factory.h"

namespace zirvel {

// From now on redraw requests draw with `factory`, which must stay alive
// until RemoveCanvasRenderer. The icon cache starts empty and then lives
// as long as the renderer stays installed.
void InstallCanvasRenderer(CanvasFactory& factory);

// Back to counting redraw requests only; drops the icon cache (before the
// platform shuts its drawing library down).
void RemoveCanvasRenderer();

}  // namespace zirvel
