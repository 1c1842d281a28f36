// SPDX-License-Identifier: GPL-2.0-or-later
/*
 * SPI controller with its bus in user space: the process that has
 * /dev/spi-peer open is the device at chip select 0, which the kernel gives to
 * spidev as /dev/spidev0.0.
 *
 * Each message is one chip-select period. The process reads it as a struct
 * spi_peer_message and the bytes sent, and writes as many bytes back.
 */
#include <linux/err.h>
#include <linux/fs.h>
#include <linux/init.h>
#include <linux/miscdevice.h>
#include <linux/mutex.h>
#include <linux/platform_device.h>
#include <linux/poll.h>
#include <linux/slab.h>
#include <linux/spi/spi.h>
#include <linux/string.h>
#include <linux/uaccess.h>
#include <linux/wait.h>

#include "spi-peer.h"

#define SPI_PEER_TIMEOUT	(10 * HZ)

enum spi_peer_state {
	SPI_PEER_IDLE,
	SPI_PEER_OFFERED,	/* a message waits for the process to read it */
	SPI_PEER_TAKEN,		/* read, not yet answered */
	SPI_PEER_ANSWERED,
};

/* Protects everything below, except that a wait reads the state without it. */
static DEFINE_MUTEX(lock);
static DECLARE_WAIT_QUEUE_HEAD(changed);
static enum spi_peer_state state;
static bool connected;
static struct spi_peer_message header;
static u8 *bytes;		/* sent, then received */

static void set_state(enum spi_peer_state new_state)
{
	WRITE_ONCE(state, new_state);
	wake_up_all(&changed);
}

static int spi_peer_open(struct inode *inode, struct file *file)
{
	int err = 0;

	mutex_lock(&lock);
	if (connected)
		err = -EBUSY;
	else
		connected = true;
	mutex_unlock(&lock);
	return err ? err : nonseekable_open(inode, file);
}

static int spi_peer_release(struct inode *inode, struct file *file)
{
	mutex_lock(&lock);
	connected = false;
	set_state(SPI_PEER_IDLE);
	mutex_unlock(&lock);
	return 0;
}

static ssize_t spi_peer_read(struct file *file, char __user *to, size_t count,
			     loff_t *pos)
{
	ssize_t result;

	if (wait_event_interruptible(changed,
				     READ_ONCE(state) == SPI_PEER_OFFERED))
		return -ERESTARTSYS;
	mutex_lock(&lock);
	if (state != SPI_PEER_OFFERED)
		result = -EAGAIN;
	else if (count < sizeof(header) + header.length)
		result = -EMSGSIZE;
	else if (copy_to_user(to, &header, sizeof(header)) ||
		 copy_to_user(to + sizeof(header), bytes, header.length))
		result = -EFAULT;
	else
		result = sizeof(header) + header.length;
	if (result > 0)
		set_state(SPI_PEER_TAKEN);
	mutex_unlock(&lock);
	return result;
}

static ssize_t spi_peer_write(struct file *file, const char __user *from,
			      size_t count, loff_t *pos)
{
	ssize_t result = count;

	mutex_lock(&lock);
	if (state != SPI_PEER_TAKEN || count != header.length)
		result = -EINVAL;
	else if (copy_from_user(bytes, from, count))
		result = -EFAULT;
	else
		set_state(SPI_PEER_ANSWERED);
	mutex_unlock(&lock);
	return result;
}

static __poll_t spi_peer_poll(struct file *file, poll_table *table)
{
	poll_wait(file, &changed, table);
	return READ_ONCE(state) == SPI_PEER_OFFERED ? EPOLLIN | EPOLLRDNORM : 0;
}

static const struct file_operations spi_peer_operations = {
	.owner = THIS_MODULE,
	.open = spi_peer_open,
	.release = spi_peer_release,
	.read = spi_peer_read,
	.write = spi_peer_write,
	.poll = spi_peer_poll,
};

static struct miscdevice spi_peer_device = {
	.minor = MISC_DYNAMIC_MINOR,
	.name = "spi-peer",
	.fops = &spi_peer_operations,
};

/* The bytes to send are in place: waits for the received ones. */
static int spi_peer_exchange(void)
{
	int err = 0;

	mutex_lock(&lock);
	if (!connected) {
		mutex_unlock(&lock);
		return -ENOTCONN;
	}
	set_state(SPI_PEER_OFFERED);
	mutex_unlock(&lock);

	wait_event_timeout(changed,
			   READ_ONCE(state) == SPI_PEER_ANSWERED ||
			   READ_ONCE(state) == SPI_PEER_IDLE, SPI_PEER_TIMEOUT);

	mutex_lock(&lock);
	if (state != SPI_PEER_ANSWERED)
		err = connected ? -ETIMEDOUT : -ENOTCONN;
	set_state(SPI_PEER_IDLE);
	mutex_unlock(&lock);
	return err;
}

static int spi_peer_transfer(struct spi_message *message)
{
	struct spi_transfer *transfer;
	size_t at = 0;
	int err;

	memset(&header, 0, sizeof(header));
	header.mode = message->spi->mode;
	list_for_each_entry(transfer, &message->transfers, transfer_list) {
		/* Not every controller keeps chip select as cs_change asks. */
		if (transfer->cs_change)
			return -EINVAL;
		header.length += transfer->len;
		header.speed_hz = max(header.speed_hz, transfer->speed_hz);
	}

	bytes = kzalloc(header.length, GFP_KERNEL);
	if (!bytes)
		return -ENOMEM;
	list_for_each_entry(transfer, &message->transfers, transfer_list) {
		if (transfer->tx_buf)
			memcpy(bytes + at, transfer->tx_buf, transfer->len);
		at += transfer->len;
	}

	err = spi_peer_exchange();

	at = 0;
	list_for_each_entry(transfer, &message->transfers, transfer_list) {
		if (!err && transfer->rx_buf)
			memcpy(transfer->rx_buf, bytes + at, transfer->len);
		at += transfer->len;
	}
	kfree(bytes);
	if (!err)
		message->actual_length = at;
	return err;
}

/* The SPI core calls this for one message at a time. */
static int spi_peer_transfer_one_message(struct spi_controller *host,
					 struct spi_message *message)
{
	message->status = spi_peer_transfer(message);
	spi_finalize_current_message(host);
	return 0;
}

static int __init spi_peer_init(void)
{
	struct spi_board_info chip = {
		.modalias = "bh2228fv",	/* a name that spidev accepts */
		.max_speed_hz = 125000000,
	};
	struct platform_device *parent;
	struct spi_controller *host;
	int err;

	err = misc_register(&spi_peer_device);
	if (err)
		return err;
	parent = platform_device_register_simple("spi-peer", -1, NULL, 0);
	if (IS_ERR(parent))
		return PTR_ERR(parent);
	/* Linux renamed these roles after 6.1, but kept this name */
	host = __spi_alloc_controller(&parent->dev, 0, false);
	if (!host)
		return -ENOMEM;
	host->bus_num = 0;
	host->num_chipselect = 1;
	host->mode_bits = SPI_CPOL | SPI_CPHA | SPI_CS_HIGH;
	host->bits_per_word_mask = SPI_BPW_MASK(8);
	host->max_speed_hz = chip.max_speed_hz;
	host->transfer_one_message = spi_peer_transfer_one_message;
	err = spi_register_controller(host);
	if (err)
		return err;
	return spi_new_device(host, &chip) ? 0 : -ENODEV;
}
late_initcall(spi_peer_init);
