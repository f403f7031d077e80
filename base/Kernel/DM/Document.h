#pragma once

#include <Kernel/DM/IDocument.h>
#include <Kernel/DM/ParserContext.h>
#include <Kernel/UnitSettings.h>

namespace Kernel::DM {

/**
 * A document that is nothing but its parameters and unit settings, both
 * editable: for hosts and tools without a project of their own.
 */
class ORVEXBASE_EXPORT Document : public IDocument
{
public:
    Document();
    ~Document() override;

    const ParserContext& parserContext() const override { return m_parserContext; }
    const UnitSettings& unitSettings() const override { return m_unitSettings; }
    ParserContext& parserContext() { return m_parserContext; }
    UnitSettings& unitSettings() { return m_unitSettings; }

private:
    ParserContext m_parserContext;
    UnitSettings m_unitSettings;
};

} // namespace Kernel::DM
