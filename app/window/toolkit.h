// How the toolkit speaks and looks in every program that shows Quillet's windows. User-interface thread, once
// the QApplication exists and before the first window does.
#pragma once

namespace quillet {

// The toolkit's own texts in Traditional Chinese, Han characters in their Taiwanese forms, the window icon.
void PrepareToolkit();

}  // namespace quillet
