# SPDX-License-Identifier: MIT
"""How hypothesis draws its examples: other programs may be using the processors."""

import hypothesis

hypothesis.settings.register_profile("cntr", deadline=None, database=None)
hypothesis.settings.load_profile("cntr")
