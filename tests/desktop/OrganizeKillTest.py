"""Ovin is killed at random moments of organizing, over and over, and started again: the display must be as it was.

Started with the paths of ovin-items, status-item and ovin, and the number of kills (15). OVIN_KILL_SEED repeats a run.
"""

import collections
import os
import random
import sys
import time

COUNT_OF_KILLS = int(sys.argv.pop(4)) if len(sys.argv) > 4 and sys.argv[4].isdigit() else 15
SEED = int(os.environ.get("OVIN_KILL_SEED", time.time_ns() % 1_000_000))

from Organizing import ORGANIZE, USUAL, OrganizeTestCase, clickOn, isOnRecord, mode, readDefaults  # noqa: E402
from OvinTest import BOUND, becomes, main  # noqa: E402

# Seconds; where a kill may fall after the click that begins organizing, and after the one that ends it.
BEGINNING, ENDING = 2.0, 0.5


class Kills(OrganizeTestCase):
    def testTheDisplayIsAlwaysPutBack(self):
        print(f"OVIN_KILL_SEED={SEED}, {COUNT_OF_KILLS} kills", flush=True)
        chance = random.Random(SEED)
        counts = collections.Counter()
        ovin = self.startInCrowd()
        for number in range(COUNT_OF_KILLS):
            counts[self.killSomewhere(ovin, chance)] += 1
            counts["before Done" if self.isBeforeDone else "after Done"] += 1
            self.awaitGone()
            ovin = self.startInCrowd()
            # Ovin's item may be there before Ovin has looked for what is owed.
            self.assertTrue(becomes(lambda: mode() == USUAL and not isOnRecord()), (number, mode(), readDefaults()))
            self.assertIsNone(ovin.poll())
            if (number + 1) % 10 == 0:
                print(f"{number + 1}: {dict(sorted(counts.items()))}", flush=True)
        print(f"all {COUNT_OF_KILLS}: {dict(sorted(counts.items()))}")
        self.assertGreater(counts["widened and on record"], 0, "no kill was where it matters")
        self.assertEqual(counts["WIDENED WITHOUT A RECORD"], 0)

    def killSomewhere(self, ovin, chance):
        """What the kill has left."""
        self.isBeforeDone = chance.random() < 0.6
        self.choose(ORGANIZE)
        if self.isBeforeDone:
            delay = chance.uniform(0, BEGINNING)
        else:
            self.awaitCard()
            clickOn(self.done())  # it may miss a button that moves, which is a moment like others
            delay = chance.uniform(0, ENDING)
        time.sleep(delay)
        ovin.kill()
        ovin.wait(BOUND)
        self.assertEqual(ovin.returncode, -9)
        isWide = mode() != USUAL
        if isWide:
            return "widened and on record" if isOnRecord() else "WIDENED WITHOUT A RECORD"
        return "as usual and on record" if isOnRecord() else "as usual"


if __name__ == "__main__":
    main()
