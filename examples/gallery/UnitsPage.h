#pragma once

#include <Kernel/DM/Document.h>
#include <Kernel/DM/ParserContext.h>

#include <QWidget>

#include <memory>
#include <set>
#include <string>

class QFormLayout;
class QLabel;

namespace Kernel {
class Quantity;
}

namespace QtUIBase {
class OrvexEquationInputBox;
}

/**
 * The "Units and panels" page: a set-up form of equation boxes for a
 * length, a frequency and a plain number, in collapsible sections, beside
 * a stand-in 3-D view with a sticker note and the model file's encryption
 * indicator, the two split by a splitter; a mesh-density slider carries a
 * track mark at the recommended value.
 *
 * The page's document has the parameters L and W (lengths) and f0 (a
 * frequency); the boxes add the plain numbers n and k. Under each box a
 * line says why its text is not accepted.
 *
 * The page registers as "Units"; its widgets are recorded under it.
 */
class UnitsPage : public QWidget
{
    Q_OBJECT

public:
    explicit UnitsPage(QWidget* parent = nullptr);
    ~UnitsPage() override;

private:
    QWidget* buildForm();
    QWidget* buildView();
    /// An equation box asking for @p quantity (a plain number when null),
    /// with its explanation line, added to @p form under @p label.
    QtUIBase::OrvexEquationInputBox* addBox(QFormLayout* form, const QString& name, const QString& label,
                                            const Kernel::Quantity* quantity, const QString& text);
    void explain(QtUIBase::OrvexEquationInputBox* box, QLabel* line) const;

    Kernel::DM::Document m_document;
    std::set<std::string> m_names;
    Kernel::DM::ParserContext m_context;
};
