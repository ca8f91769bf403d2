#include "widgets/instrument_button.h"

#include "platform/user_text.h"
#include "widgets/instrument_list.h"

InstrumentButton::InstrumentButton(QWidget* parent) : QPushButton(parent) {
    setText(UserText::tr("Scegli"));
    setToolTip(UserText::tr("Sceglie lo strumento per nome"));
    setAccessibleName(toolTip());
    setAutoDefault(false);
    auto* list = new InstrumentList(this);
    connect(this, &QPushButton::clicked, list, [this, list] { list->open(*this, program_); });
    connect(list, &InstrumentList::programChosen, this, &InstrumentButton::programChosen);
}
