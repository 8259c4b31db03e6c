<nav aria-label="{htmlspecialchars menu_title}"><ul><li><a href="{menu_url}/books">Books</a></li><li><a href="/maps">Maps</a></li></ul><p>{menu_text}</p></nav>
