<form action="{search_url}" role="search"><label>{htmlspecialchars search_title} <input type="search" name="q" placeholder="{search_text}"></label><button>Go</button></form>
