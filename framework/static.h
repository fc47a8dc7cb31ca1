#pragma once

#include "framework/wnd.h"

/// A label of a dialog that draws or behaves in a way of its own; attach it with SubclassWindow.
class CStatic : public CWnd {};
