#!/usr/bin/env python3
"""Python's plistlib writing and reading the same route record as
bench_settings (100,000 points), for comparison with the store's figures."""
import os
import plistlib
import sys
import tempfile
import time

count = int(sys.argv[1]) if len(sys.argv) > 1 else 100000
record = {
    "enable": "1",
    "start": "1700000000.000000",
    "end": "1700003600.000000",
    "s": "Central, Hong Kong",
    "e": "Tsim Sha Tsui, Kowloon",
    "points": [{"lat": 22.2846809 + i * 1.37e-5, "lng": 114.1588 + i * 2.11e-5} for i in range(count)],
}
with tempfile.TemporaryDirectory() as folder:
    path = os.path.join(folder, "route.plist")
    writes, reads = [], []
    for _ in range(5):
        start = time.perf_counter()
        with open(path, "wb") as f:
            plistlib.dump(record, f, fmt=plistlib.FMT_XML)
        writes.append(time.perf_counter() - start)
        start = time.perf_counter()
        with open(path, "rb") as f:
            plistlib.load(f)
        reads.append(time.perf_counter() - start)
print(f"plistlib write {min(writes) * 1000:.0f} ms, read {min(reads) * 1000:.0f} ms ({count} points)")
