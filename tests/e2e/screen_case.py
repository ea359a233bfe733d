"""What a case on a screen starts from; another platform's cases put their own in its place."""

from screen import Screen
from shop import ShopTest


class ScreenTest(ShopTest):
    # Titles that the platform chooses.
    FOLDER_BROWSER = "フォルダの選択"
    UNTITLED = " "

    def screen(self, **how):
        return Screen(self.addCleanup, **how)
