// Runs before the page is painted: the reader's choice of a light or dark look.

import { kept } from "./storage";

document.documentElement.dataset.theme = kept("theme") ?? "";
