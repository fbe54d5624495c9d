"""The program's store, read from outside while the program runs."""

import sqlite3

from .waiting import wait_until


class Store:
    """Reads the store's tables; a file that is not there yet reads as empty tables."""

    def __init__(self, path):
        self.path = path

    def query(self, sql, *values):
        """Rows as dictionaries."""
        if not self.path.exists():
            return []
        connection = sqlite3.connect(f"file:{self.path}?mode=ro", uri=True, timeout=5)
        try:
            connection.row_factory = sqlite3.Row
            return [dict(row) for row in connection.execute(sql, values)]
        except sqlite3.OperationalError as failure:
            if "no such table" in str(failure):
                return []
            raise
        finally:
            connection.close()

    def items(self):
        """Every entry without its image, newest first."""
        return self.query(
            "SELECT id, content, type, sourceAppName, sourceAppBundleId, isPinned, createdAt, characterCount,"
            " categoryId FROM ClipboardItem ORDER BY createdAt DESC, rowid DESC"
        )

    def contents(self):
        """The texts of the entries, newest first."""
        return [item["content"] for item in self.items()]

    def image(self, identifier):
        """The image bytes of an entry."""
        return self.query("SELECT imageData FROM ClipboardItem WHERE id = ?", identifier)[0]["imageData"]

    def item(self, content):
        """The entry with exactly the text, or nothing."""
        return next((item for item in self.items() if item["content"] == content), None)

    def wait_for(self, content, deadline=10.0):
        """The entry with exactly the text, once it is stored."""
        shown = content if len(content) < 80 else content[:77] + "..."
        return wait_until(lambda: self.item(content), f"stored: {shown!r}", deadline)

    def wait_for_newest(self, accept, what, deadline=10.0):
        """The newest entry, once it is one that `accept` takes."""
        def newest():
            items = self.items()
            return items[0] if items and accept(items[0]) else None

        return wait_until(newest, what, deadline)

    def integrity(self):
        """What SQLite's own check says: "ok" when all is well."""
        return self.query("PRAGMA integrity_check")[0]["integrity_check"]

    def change(self, sql, *values):
        """Changes the store; only while the program does not run."""
        connection = sqlite3.connect(self.path)
        try:
            with connection:
                connection.execute(sql, values)
        finally:
            connection.close()
