/* SPDX-License-Identifier: GPL-2.0-or-later */
/* What the driver spi-peer and the process behind it exchange. */
#pragma once

#include <linux/types.h>

/* clang-format off */

/* The first bytes of a read of /dev/spi-peer; the bytes sent follow. */
struct spi_peer_message {
	__u32 length;	/* bytes in all transfers of the message */
	__u32 speed_hz;	/* of the fastest transfer */
	__u32 mode;	/* SPI_... flags of linux/spi/spi.h */
};
