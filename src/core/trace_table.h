// What the library's start-up and end do to the trace table.
#ifndef BRCORE8_SRC_CORE_TRACE_TABLE_H
#define BRCORE8_SRC_CORE_TRACE_TABLE_H

namespace brcore8 {

// Empties the table and gives its memory back.
void ClearTraceMasks() noexcept;

}  // namespace brcore8

#endif
