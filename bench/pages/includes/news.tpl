<form class="news" action="{news_url}" method="post"><h3>{htmlspecialchars news_title}</h3><p>{news_text}</p><input type="email" name="mail"><button>Subscribe</button></form>
