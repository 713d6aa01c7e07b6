// A host answers this address with what the page is to begin with. Without one it begins empty.
