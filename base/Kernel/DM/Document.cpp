#include "Kernel/DM/Document.h"

namespace Kernel::DM {

IDocument::~IDocument() = default;

Document::Document() = default;

Document::~Document() = default;

} // namespace Kernel::DM
