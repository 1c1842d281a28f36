// SPDX-License-Identifier: GPL-3.0-or-later
// The page, unchanged; the build passes its path.
  .section .rodata
  .global kelvo_remote_page
  .type kelvo_remote_page, %object
  .global kelvo_remote_page_end
  .type kelvo_remote_page_end, %object
kelvo_remote_page:
  .incbin PAGE_FILE
kelvo_remote_page_end:
  .byte 0
  .size kelvo_remote_page, kelvo_remote_page_end - kelvo_remote_page
  .size kelvo_remote_page_end, 1
  .section .note.GNU-stack, "", %progbits
