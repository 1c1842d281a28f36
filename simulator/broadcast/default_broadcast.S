// SPDX-License-Identifier: GPL-3.0-or-later
// The built-in broadcast file, unchanged; the build passes its path.
  .section .rodata
  .global kelvo_default_broadcast
  .type kelvo_default_broadcast, %object
  .global kelvo_default_broadcast_end
  .type kelvo_default_broadcast_end, %object
kelvo_default_broadcast:
  .incbin DEFAULT_BROADCAST_FILE
kelvo_default_broadcast_end:
  .byte 0
  .size kelvo_default_broadcast, kelvo_default_broadcast_end - kelvo_default_broadcast
  .size kelvo_default_broadcast_end, 1
  .section .note.GNU-stack, "", %progbits
