"""Thumbnail caches as Windows lays them out: the compound file Thumbs.db, and thumbcache_96.db."""
import struct

SECTOR, MINI_SECTOR, MINI_CUTOFF = 512, 64, 4096
FREE, END, FAT_SECTOR = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD


def _padded(data, size):
    return data + b'\0' * (-len(data) % size)


def _chain(table, first, count):
    """Enters a run of neighbouring sectors into an allocation table."""
    table.extend([*range(first + 1, first + count), END] if count else [])


def compound_file(streams):
    """A compound file of version 3 with these streams, a dict of names and bytes, below its root."""
    sectors, fat, mini, mini_fat, places = b'', [], b'', [], {}

    def add(data):
        nonlocal sectors
        first = len(sectors) // SECTOR
        sectors += _padded(data, SECTOR)
        _chain(fat, first, len(sectors) // SECTOR - first)
        return first
    for name, data in streams.items():
        if len(data) >= MINI_CUTOFF:
            places[name] = add(data)
            continue
        places[name] = len(mini) // MINI_SECTOR
        mini += _padded(data, MINI_SECTOR)
        _chain(mini_fat, places[name], len(mini) // MINI_SECTOR - places[name])
    mini_start = add(mini) if mini else END
    mini_fat_bytes = b''.join(struct.pack('<I', entry) for entry in mini_fat)
    mini_fat_bytes += b'\xff' * (-len(mini_fat_bytes) % SECTOR)
    mini_fat_start = add(mini_fat_bytes) if mini_fat else END

    def entry(name, kind, child, right, start, size):
        text = name.encode('utf-16-le')
        return struct.pack('<64sHBBIII16sIQQIQ', text, len(text) + 2 if name else 0, kind, 1, FREE, right, child, b'',
                           0, 0, 0, start, size)
    names = list(streams)
    directory = entry('Root Entry', 5, 1 if names else FREE, FREE, mini_start, len(mini))
    for i, name in enumerate(names):
        right = i + 2 if i + 1 < len(names) else FREE
        directory += entry(name, 2, FREE, right, places[name], len(streams[name]))
    directory_start = add(directory)
    fat_start, fat_count = len(fat), 1
    while (len(fat) + fat_count) * 4 > fat_count * SECTOR:
        fat_count += 1
    fat += [FAT_SECTOR] * fat_count
    fat += [FREE] * (fat_count * SECTOR // 4 - len(fat))
    sectors += b''.join(struct.pack('<I', value) for value in fat)
    listed = [fat_start + i for i in range(fat_count)]
    header = struct.pack('<8s16sHHHHH6xIIIIIIIII', b'\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1', b'', 0x3E, 3, 0xFFFE, 9, 6, 0,
                         fat_count, directory_start, 0, MINI_CUTOFF, mini_fat_start,
                         len(mini_fat_bytes) // SECTOR, END, 0)
    return header + b''.join(struct.pack('<I', value) for value in listed + [FREE] * (109 - len(listed))) + sectors


def thumbs_db(pictures):
    """One stream for each picture, behind 12 bytes of its own, and the catalog. Their names are their numbers
    with the digits turned round."""
    streams = {str(i)[::-1]: struct.pack('<III', 12, i, len(p)) + p for i, p in enumerate(pictures, 1)}
    catalog = struct.pack('<HHIII', 16, 5, len(pictures), 96, 96)
    for i in range(1, len(pictures) + 1):
        name = f'picture {i}.jpg\0\0'.encode('utf-16-le')
        catalog += struct.pack('<IIQ', 16 + len(name), i, 0) + name
    return compound_file(streams | {'Catalog': catalog})


def thumb_cache(pictures):
    """The cache of Windows 7 for pictures of 96 pixels: a header, then for each an entry with a header of its own."""
    entries = b''
    for i, picture in enumerate(pictures):
        name = f'{i:016x}'.encode('utf-16-le')
        size = 56 + len(name) + len(picture)
        padding = -size % 8
        entries += struct.pack('<4sIQIIIIQQ', b'CMMM', size + padding, i, len(name), padding, len(picture), 0, 0, 0)
        entries += b'\0' * (56 - 48) + name + b'\0' * padding + picture
    return struct.pack('<4sIIIII', b'CMMM', 0x15, 1, 24, 24 + len(entries), len(pictures)) + entries
