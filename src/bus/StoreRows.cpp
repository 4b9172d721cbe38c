#include "bus/StoreRows.h"

#include "core/TmatsDocument.h"
#include "groups/GroupLists.h"
#include "groups/GroupRecord.h"

namespace kavu {

bool storeRows(DocumentContext& context, UserInterface* parent, int index,
               std::span<const Field> table, const GroupRow& record, const GroupFile& kept) {
    const GroupLists lists(table);
    const auto moved = keptAtRows(kept, lists, groupHead('S', index), record);
    GroupWriter writer('S', index);
    writer.writeTable(table, record, context.document.version);
    return storeGroup(context, parent, 'S', index, writer.text(), moved);
}

}  // namespace kavu
