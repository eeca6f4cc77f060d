"""make_caches.py FOLDER: thumbnail caches as Windows lays them out in FOLDER/caches, and the pictures that are in them in
FOLDER/pictures. These, and the empty files in FOLDER/others, are enough to keep the program busy for a while."""
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / 'browsers'))
import thumb_caches  # noqa: E402

# Both below and above the size at which a stream leaves the compound file's small sectors; the last is the load.
SIZES = ['32x24', '64x48', '96x64', '200x150', '150x150']
CACHES, PICTURES_IN_EACH = 12, 250
OTHER_FOLDERS, FILES_IN_EACH = 80, 100


def main():
    folder = pathlib.Path(sys.argv[1])
    for name in ('caches', 'pictures'):
        (folder / name).mkdir(parents=True)
    pictures = []
    for number, size in enumerate(SIZES, 1):
        path = folder / 'pictures' / f'{number}.jpg'
        subprocess.run(['convert', '-size', size, 'xc:gray', '-seed', str(number), '+noise', 'random', '-quality', '92', path],
                       check=True)
        pictures.append(path.read_bytes())
    caches = folder / 'caches'
    (caches / 'Thumbs.db').write_bytes(thumb_caches.thumbs_db(pictures[:4]))
    for number in range(CACHES):
        (caches / f'thumbcache_{number:02}.db').write_bytes(thumb_caches.thumb_cache(pictures[4:] * PICTURES_IN_EACH))
    for number in range(OTHER_FOLDERS):
        other = folder / 'others' / str(number)
        other.mkdir(parents=True)
        for file in range(FILES_IN_EACH):
            (other / f'{file}.txt').touch()


if __name__ == '__main__':
    main()
