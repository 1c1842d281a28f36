// SPDX-License-Identifier: GPL-3.0-or-later
// The build defines the paths of the three files.

.macro image name, path
        .global \name
        .type   \name, %object
        .balign 4
\name:
        .incbin "\path"
        .size   \name, . - \name
.endm

        .section .rodata
        image   fw_rom00_patch016bin, FW_ROM00_PATCH
        image   fw_dab_radio_5_0_5bin, FW_DAB_RADIO
        image   fw_fmhd_radio_5_0_4bin, FW_FMHD_RADIO

        .section .note.GNU-stack, "", %progbits
