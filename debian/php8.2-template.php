mod debian/template.ini
